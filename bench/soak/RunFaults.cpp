#include "Captures.h"
#include "Failure.h"
#include "Faults.h"
#include "Runs.h"

#include "desktop/support/HotKeys.h"

#include <memory>
#include <utility>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

/// Kills the program: nothing of it may stay on the screen, and no key be held.
void killAndLook(World& world)
{
    const qint64 pid = world.person.program().pid();
    Runs::kill(world);
    const auto isGone = [&] { return world.person.windows().shown(pid).empty(); };
    require(desktop::waitUntil(isGone), QStringLiteral("windows of a killed program stay"));
    const auto rival = world.person.desktop().rival();
    require(!rival->isHotKeyTaken(Qt::Key_Escape, {}),
            QStringLiteral("Escape belongs to a killed program"));
    require(!desktop::areHotKeysTaken(*rival),
            QStringLiteral("the hot keys belong to a killed program"));
    Runs::start(world);
}

void killedWhileItEncodes(World& world)
{
    constexpr int kLongest = 60; // ms: a picture takes about as long
    const Picture frozen = world.freeze(world.monitors.front());
    require(world.person.program().command({QStringLiteral("fullScreen")}).exitCode == 0,
            QStringLiteral("the command is refused"));
    QTest::qWait(world.chance.below(kLongest)); // any moment of the picture's way
    world.ledger->mayTake(frozen.part(world.monitors.front()));
    killAndLook(world);
}

void quitWhileItEncodes(World& world)
{
    Captures::fullScreen(world, Trigger::command);
    Runs::quit(world);
    world.ledger->verify(world.person.desktop().clipboard());
    Runs::start(world);
}

void quitAndStart(World& world)
{
    Runs::quit(world);
    Runs::start(world);
}

/// Both to take the whole screen. Answers the one that stays.
std::unique_ptr<desktop::Process> startTwo(World& world)
{
    std::unique_ptr<desktop::Process> one;
    std::unique_ptr<desktop::Process> other;
    const QStringList command{QStringLiteral("fullScreen")};
    Runs::startBeside(world, [&] {
        one = world.person.program().another(command);
        other = world.person.program().another(command);
    });
    const auto oneEnds = [&] { return one->isRunning() != other->isRunning(); };
    require(desktop::waitUntil(oneEnds), QStringLiteral("two copies run, or none"));
    if (other->isRunning())
        std::swap(one, other);
    require(other->exitCode() == 0, QStringLiteral("the second copy does not end with code 0"));
    return one;
}

void twoAtOnce(World& world)
{
    Runs::quit(world);
    const QRect monitor = world.monitors.front();
    const Picture picture = world.freeze(monitor).part(monitor);
    const Places places{.file = world.settings.autoSaveFullScreen,
                        .history = world.settings.keepHistory};
    const auto stayed = startTwo(world);
    world.ledger->takes(picture, places);
    // Taken within the same second they have the same name in the captures folder.
    world.ledger->takes(picture, {.history = places.history});
    if (places.file)
        world.ledger->allowFile(picture);
    // Both pictures are where they belong once it has ended.
    require(stayed->end(), QStringLiteral("the first copy has to be killed"));
    require(stayed->exitCode() == 0, QStringLiteral("the first copy does not end with code 0"));
    world.ledger->programEnds();
    Runs::start(world);
}

void clockJumps(World& world)
{
    constexpr long long kDay = 86'400; // seconds
    static const std::vector<long long> kJumps{kDay, 400 * kDay, -kDay, -3600, -3650 * kDay};
    Runs::shiftClock(world, world.chance.oneOf(kJumps));
}

void clockIsRight(World& world)
{
    Runs::shiftClock(world, 0);
}

} // namespace

std::vector<Fault> runFaults()
{
    return {
        {"killed at rest", "as a crash would", "no window and no hot key stay", Part::nothing,
         Run::another, Situation::rest, killAndLook},
        {"killed in a session", "as a crash would", "no window and no hot key stay", Part::nothing,
         Run::another, Situation::selected, killAndLook},
        {"killed with the drawer open", "as a crash would", "no window and no hot key stay",
         Part::nothing, Run::another, Situation::drawer, killAndLook},
        {"killed while it encodes", "as a crash would", "files are whole or not there",
         Part::nothing, Run::another, Situation::rest, killedWhileItEncodes},
        {"quits while it encodes", "is asked to end at once", "the picture is kept", Part::nothing,
         Run::another, Situation::rest, quitWhileItEncodes},
        {"quits in a session", "is asked to end, and starts anew",
         "what was copied live is in the history", Part::nothing, Run::another, Situation::selected,
         quitAndStart},
        {"quits with the panel open", "is asked to end, and starts anew", "it ends", Part::nothing,
         Run::another, Situation::panel, quitAndStart},
        {"quits with the drawer open", "is asked to end, and starts anew", "it ends", Part::nothing,
         Run::another, Situation::drawer, quitAndStart},
        {"two are started at once", "both are to take the screen", "both do, and one stays",
         Part::nothing, Run::another, Situation::rest, twoAtOnce},
        {"the clock jumps", "by an hour, a day or years, for some steps",
         "history and files take what comes", Part::clock, Run::goesOn, Situation::rest, clockJumps,
         clockIsRight},
    };
}

} // namespace brindlecam::soak
