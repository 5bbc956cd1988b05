#pragma once

namespace brindlecam::soak {

struct World;

/// The settings window, as a person opens and leaves it.
namespace SettingsWindows {

enum class Trigger { command, tray };

/// Opens it on the first monitor, where no pin lies over it, and waits until it has the keyboard.
void open(World& world, Trigger trigger);
void close(World& world);

} // namespace SettingsWindows

} // namespace brindlecam::soak
