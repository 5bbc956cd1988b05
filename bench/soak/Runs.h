#pragma once

#include <functional>

namespace brindlecam::soak {

struct World;

/// Runs of the program from start to end, and what they stand on.
namespace Runs {

/// Starts it and waits until keys and tray are its own.
void start(World& world);
/// The same without waiting for the hot keys.
void startWithoutKeys(World& world);
/// Waits after a start of whatever kind until the tray, which runs on this thread, has answered all
/// that the program asks it.
void startBeside(World& world, const std::function<void()>& start);
/// Asks it to end, as a session manager does: quickly, with code 0, and with everything kept that
/// had been taken.
void quit(World& world);
/// Ends it as a crash would.
void kill(World& world);
/// It has ended by itself, or is about to: nothing of it is expected any more.
void forget(World& world);

/// A panel takes the program's status item.
void openTray(World& world);
/// Chooses the entry with this title from the program's menu.
void chooseInTray(World& world, const char* title);

/// Puts the program's clock so many seconds before the machine's.
void shiftClock(const World& world, long long seconds);

} // namespace Runs

} // namespace brindlecam::soak
