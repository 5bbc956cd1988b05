#include "Captures.h"
#include "Drawers.h"
#include "Failure.h"
#include "Faults.h"

namespace brindlecam::soak {

namespace {

constexpr QRect kLeft{0, 0, 1024, 800};
constexpr QRect kRight{1024, 0, 256, 800};
constexpr QRect kCloser{0, 0, 1000, 800}; // than kLeft

const QString kLeftName = QStringLiteral("LEFT");
const QString kRightName = QStringLiteral("RIGHT");

void anotherComes(World& world)
{
    world.person.desktop().setMonitors({{kLeftName, kLeft}, {kRightName, kRight}});
    world.monitors = {kLeft, kRight};
    // In the moment of the change. From then on they are known.
    Captures::open(world, Captures::Trigger::key);
}

void onlyOneStays(World& world)
{
    world.person.desktop().setMonitors({{QStringLiteral("ONLY"), Scene::kScreen}});
    world.monitors = {Scene::kScreen};
    Captures::open(world, Captures::Trigger::key);
    Captures::escape(world);
}

/// An area on the left of two monitors.
void selectOnTheLeft(World& world)
{
    anotherComes(world);
    Captures::dragRoomy(world);
}

void otherIsUnplugged(World& world)
{
    selectOnTheLeft(world);
    world.person.desktop().removeMonitor(kRightName);
    require(world.person.sessionIsReady(1), QStringLiteral("the session has lost its monitor"));
    Captures::take(world);
    onlyOneStays(world);
}

void ownChanges(World& world)
{
    selectOnTheLeft(world);
    world.ledger->verify(world.person.desktop().clipboard());
    Captures::keepLiveCopy(world);
    world.person.desktop().setMonitor({kLeftName, kCloser});
    require(world.person.sessionIsOver(), QStringLiteral("the session stays on a monitor's ruins"));
    onlyOneStays(world);
}

void drawersChanges(World& world)
{
    anotherComes(world);
    Captures::escape(world);
    Drawers::openOn(world, kLeft, Captures::Trigger::key);
    world.person.desktop().setMonitor({kLeftName, kCloser});
    Drawers::awaitGone(world);
    onlyOneStays(world);
}

} // namespace

std::vector<Fault> monitorFaults()
{
    return {
        {"a second monitor comes", "two instead of one, and one again some steps later",
         "captures know both", Part::monitors, Run::goesOn, Situation::rest, anotherComes,
         onlyOneStays},
        {"the other monitor goes in a session", "is unplugged", "the selection is taken",
         Part::monitors, Run::goesOn, Situation::rest, otherIsUnplugged},
        {"the session's monitor changes", "gets another size", "it ends as by Escape",
         Part::monitors, Run::goesOn, Situation::rest, ownChanges},
        {"the drawer's monitor changes", "gets another size", "the drawer closes", Part::monitors,
         Run::goesOn, Situation::rest, drawersChanges},
    };
}

} // namespace brindlecam::soak
