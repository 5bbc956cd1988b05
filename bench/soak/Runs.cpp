#include "Runs.h"

#include "Captures.h"
#include "Failure.h"
#include "World.h"

#include <QFile>

namespace brindlecam::soak::Runs {

void startBeside(World& world, const std::function<void()>& start)
{
    const auto known = world.tray->items().size();
    start();
    require(desktop::waitUntil([&] { return world.tray->items().size() > known; }),
            QStringLiteral("the tray: no status item comes"));
}

void start(World& world)
{
    startBeside(world, [&] { world.person.startProgram(); });
}

void startWithoutKeys(World& world)
{
    startBeside(world, [&] { world.person.program().start(); });
}

void quit(World& world)
{
    Captures::keepLiveCopy(world);
    const int exitCode = world.person.program().quit();
    require(exitCode == 0,
            QStringLiteral("the program ends with code %1 instead of 0").arg(exitCode));
    forget(world);
}

void kill(World& world)
{
    world.person.program().kill();
    forget(world);
}

void forget(World& world)
{
    world.session.reset();
    world.pins.clear();
    world.drawer.reset();
    world.settingsAreOpen = false;
    world.ledger->programEnds();
}

void openTray(World& world)
{
    world.tray = std::make_unique<desktop::TrayHost>(world.person.desktop());
}

void chooseInTray(World& world, const char* title)
{
    const QString name = QString::fromUtf8(title);
    require(world.tray->choose(world.tray->items().back(), {name}),
            QStringLiteral("the tray: no entry %1").arg(name));
}

void shiftClock(const World& world, long long seconds)
{
    QFile file(world.clock);
    // In place: the program has mapped it.
    require(file.open(QIODevice::ReadWrite) && file.write(reinterpret_cast<const char*>(&seconds),
                                                          sizeof seconds) == sizeof seconds,
            QStringLiteral("the clock cannot be put"));
}

} // namespace brindlecam::soak::Runs
