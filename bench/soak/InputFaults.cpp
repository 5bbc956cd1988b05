#include "Captures.h"
#include "Failure.h"
#include "Faults.h"
#include "Runs.h"

#include <csignal>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

void inputIsTaken(World& world)
{
    const auto rival = world.person.desktop().rival();
    require(desktop::waitUntil([&] { return rival->takeKeyboard() && rival->takePointer(); }),
            QStringLiteral("somebody keeps keyboard or pointer"));
    const auto refused = world.person.program().command({QStringLiteral("area")});
    require(refused.exitCode == 0, QStringLiteral("the command for an area is refused"));
    require(world.person.toastSays(
                QStringLiteral("Captura cancelada: otro programa retiene el ratón o el teclado")),
            QStringLiteral("nobody is told why no session opens"));
    require(world.person.overlays().empty(), QStringLiteral("an overlay that nobody can use"));
    Captures::fullScreen(world, Trigger::command);
    rival->giveBackKeyboardAndPointer();
}

void keyboardIsTaken(World& world)
{
    const auto rival = world.person.desktop().rival();
    require(desktop::waitUntil([&] { return rival->takeKeyboard(); }),
            QStringLiteral("somebody keeps the keyboard"));
    world.person.input().tap(Qt::Key_Escape);
    require(desktop::waitUntil([&] { return rival->gotKeys(); }),
            QStringLiteral("the key comes to nobody"));
    rival->giveBackKeyboardAndPointer();
    require(world.person.sessionIsReady(world.monitors.size()),
            QStringLiteral("the session has lost the screen or the keys"));
}

void hotKeyIsTaken(World& world)
{
    Runs::quit(world);
    auto rival = world.person.desktop().rival();
    require(rival->takeHotKey(desktop::kAreaKey, desktop::kHotKeyModifiers),
            QStringLiteral("somebody keeps the hot key"));
    Runs::startWithoutKeys(world);
    Captures::open(world, Trigger::command);
    Captures::escape(world);
    world.person.pressHotKey(desktop::kAreaKey);
    require(desktop::waitUntil([&] { return rival->gotKeys(); }),
            QStringLiteral("the hot key comes to nobody"));
    require(world.person.overlays().empty(), QStringLiteral("two have the same hot key"));
    Runs::quit(world);
    rival.reset();
    Runs::start(world);
}

void programIsStopped(World& world)
{
    const Picture frozen = world.freeze(world.monitors.front());
    world.person.signalProgram(SIGSTOP);
    world.person.pressHotKeyAtOnce(desktop::kAreaKey);
    world.person.signalProgram(SIGCONT);
    require(world.person.sessionIsReady(world.monitors.size()),
            QStringLiteral("a hot key pressed meanwhile is lost"));
    world.session = Session{.frozen = frozen};
}

} // namespace

std::vector<Fault> inputFaults()
{
    return {
        {"pointer and keyboard are taken", "another program has both",
         "an area is refused with a message, a whole screen is taken", Part::nothing, Run::goesOn,
         Situation::rest, inputIsTaken},
        {"the keyboard is taken in a session", "another program has it for a moment",
         "its key ends nothing, the session goes on", Part::nothing, Run::goesOn,
         Situation::selected, keyboardIsTaken},
        {"the program is stopped", "does not run while a hot key is pressed",
         "the session opens later", Part::nothing, Run::goesOn, Situation::rest, programIsStopped},
        {"a hot key is taken", "another program has it before ours begins",
         "the command works, the key is the other's", Part::nothing, Run::another, Situation::rest,
         hotKeyIsTaken},
    };
}

} // namespace brindlecam::soak
