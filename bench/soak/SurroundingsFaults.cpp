#include "Bars.h"
#include "Captures.h"
#include "Drawers.h"
#include "Failure.h"
#include "Faults.h"
#include "Runs.h"

#include "desktop/ToolNames.h"

#include <algorithm>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

void managerCrashes(World& world)
{
    world.person.desktop().killWindowManager();
}

void managerComes(World& world)
{
    world.person.desktop().startWindowManager();
}

void managerIsReplaced(World& world)
{
    Captures::reachBars(world);
    world.person.desktop().endWindowManager();
    world.person.desktop().startWindowManager();
    // It may give the keys to another window. A session that has just begun takes them back, a
    // later one when it is pressed.
    Bars::press(world.person, desktop::nameOf(std::nullopt));
    world.session->tool.reset();
    require(world.person.sessionIsReady(world.monitors.size()),
            QStringLiteral("the session has lost the screen or the keys"));
}

void managerHangs(World& world)
{
    world.scene->straighten();
    world.person.desktop().pauseWindowManager();
    Captures::open(world, Trigger::key);
    Captures::dragRoomy(world);
    Captures::take(world);
    world.person.desktop().resumeWindowManager();
}

void compositorComes(World& world)
{
    world.person.desktop().startCompositor();
}

void compositorGoes(World& world)
{
    world.person.desktop().endCompositor();
}

void compositorComesAndGoes(World& world)
{
    compositorComes(world);
    require(world.person.sessionIsReady(world.monitors.size()),
            QStringLiteral("the session has lost the screen or the keys"));
    compositorGoes(world);
}

void compositorComesAndGoesOverTheDrawer(World& world)
{
    compositorComes(world);
    Drawers::awaitStands(world);
    compositorGoes(world);
}

/// A game or a film over everything but pins.
void filmIsShown(World& world)
{
    if (world.pins.empty()) {
        Captures::reach(world, Situation::session);
        Captures::drag(world, Scene::kForPins.adjusted(0, 0, -400, -200));
        Captures::pin(world);
    }
    desktop::Desktop& desktop = world.person.desktop();
    const auto film = desktop.open({.pixels = Scene::kScreen, .colour = Qt::black});
    desktop.pager().setFullScreen(film->id(), true);
    const auto covers = [&] { return std::ranges::count(world.monitors, film->pixels()) > 0; };
    require(desktop::waitUntil(covers), QStringLiteral("the film covers no monitor"));
    for (const Pin& pin : world.pins) {
        const QPoint middle = pin.place.center();
        const auto isSeen = [&] { return world.person.screen().pixel(middle) != Qt::black; };
        require(desktop::waitUntil(isSeen), QStringLiteral("a pin is not seen over a film"));
    }
}

void trayComesAnew(World& world)
{
    world.tray.reset();
    Runs::openTray(world);
    require(desktop::waitUntil([&] { return !world.tray->items().isEmpty(); }),
            QStringLiteral("the new tray gets no status item"));
}

void busDies(World& world)
{
    world.tray.reset();
    world.person.desktop().endMessageBus();
    Captures::fullScreen(world, Trigger::key);
    world.ledger->verify(world.person.desktop().clipboard());
    Captures::open(world, Trigger::key);
    Captures::dragRoomy(world);
    Captures::take(world);
    world.ledger->verify(world.person.desktop().clipboard());
    Runs::quit(world);
    world.person.desktop().startMessageBus();
    const QString address = QStringLiteral("DBUS_SESSION_BUS_ADDRESS");
    world.person.program().environment().insert(
        address, world.person.desktop().environment().value(address));
    Runs::openTray(world);
    Runs::start(world);
}

} // namespace

std::vector<Fault> surroundingsFaults()
{
    return {
        {"window manager crashes", "is killed, and comes back some steps later",
         "pins stay, captures go on", Part::windowManager, Run::goesOn, Situation::rest,
         managerCrashes, managerComes},
        {"window manager is replaced in a session", "ends, and another one begins",
         "the session keeps the screen, and has the keys once it is pressed", Part::windowManager,
         Run::goesOn, Situation::selected, managerIsReplaced},
        {"window manager hangs", "is stopped, an area is taken, it goes on",
         "the area is taken all the same", Part::windowManager, Run::goesOn, Situation::rest,
         managerHangs},
        {"compositor comes", "begins, and ends some steps later", "pins and pictures stay",
         Part::compositor, Run::goesOn, Situation::rest, compositorComes, compositorGoes},
        {"compositor comes and goes in a session", "begins and ends",
         "the session keeps the screen", Part::compositor, Run::goesOn, Situation::selected,
         compositorComesAndGoes},
        {"compositor comes and goes over the drawer", "begins and ends", "the drawer stays",
         Part::compositor, Run::goesOn, Situation::drawer, compositorComesAndGoesOverTheDrawer},
        {"a film covers the screen", "a full-screen window comes and goes", "pins are seen over it",
         Part::windowManager, Run::goesOn, Situation::rest, filmIsShown},
        {"tray comes anew", "the panel ends, and another one begins", "it gets the status item",
         Part::nothing, Run::goesOn, Situation::rest, trayComesAnew},
        {"message bus dies", "ends, and with the next run there is another one",
         "captures go on meanwhile", Part::nothing, Run::another, Situation::rest, busDies},
    };
}

} // namespace brindlecam::soak
