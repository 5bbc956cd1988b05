#include "Bars.h"
#include "Captures.h"
#include "Failure.h"
#include "Steps.h"

#include "desktop/support/Buttons.h"

#include <algorithm>
#include <array>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

bool pageIsBare(const World& world)
{
    const QRect page = world.scene->page();
    return std::ranges::none_of(world.pins,
                                [&](const Pin& pin) { return pin.place.intersects(page); });
}

void clickWindow(World& world)
{
    const QRect window = world.scene->framed().framePixels();
    world.person.input().click(window.center());
    Captures::areaIs(world, window);
}

bool windowIsBare(const World& world)
{
    const QRect window = world.scene->framed().framePixels();
    return std::ranges::none_of(world.pins,
                                [&](const Pin& pin) { return pin.place.intersects(window); });
}

/// Moves the area by keys, or its lower right edges.
void nudge(World& world)
{
    struct Arrow {
        Qt::Key key;
        QPoint by;
    };
    constexpr std::array kArrows{Arrow{Qt::Key_Left, {-1, 0}}, Arrow{Qt::Key_Right, {1, 0}},
                                 Arrow{Qt::Key_Up, {0, -1}}, Arrow{Qt::Key_Down, {0, 1}}};
    constexpr int kTenfold = 10; // with Shift
    const Arrow arrow = kArrows[static_cast<std::size_t>(world.chance.below(4))];
    const bool far = world.chance.oneIn(2);
    const bool edges = world.chance.oneIn(2);
    QList<Qt::Key> keys{arrow.key};
    if (far)
        keys.prepend(Qt::Key_Shift);
    if (edges)
        keys.prepend(Qt::Key_Control);
    world.person.input().chord(keys);
    const QPoint by = arrow.by * (far ? kTenfold : 1);
    QRect area = world.session->area;
    if (edges)
        area.adjust(0, 0, by.x(), by.y());
    else
        area.translate(by);
    Captures::areaIs(world, area);
}

bool mayBeNudged(const World& world)
{
    constexpr int kFar = 11; // pixels from every edge of the monitor, and of the other edge
    const Session& session = *world.session;
    return session.marks == 0 && session.undone == 0 && !session.tool &&
           Captures::barsHaveRoom(world) &&
           world.monitors.front().adjusted(kFar, kFar, -kFar, -kFar).contains(session.area);
}

void dragCorner(World& world)
{
    const QRect area = world.session->area;
    const QPoint corner = area.topLeft() + QPoint(area.width(), area.height());
    const QPoint by(world.chance.between(-15, 10), world.chance.between(-15, 10));
    world.person.input().drag(corner, corner + by);
    Captures::areaIs(world, area.adjusted(0, 0, by.x(), by.y()));
}

void pressCopy(World& world)
{
    const Picture picture = Captures::selected(world);
    Bars::press(world.person, desktop::Buttons::kCopy);
    require(world.person.sessionIsOver(), QStringLiteral("the session does not end"));
    Captures::booksTaken(world, picture);
}

void readText(World& world)
{
    constexpr int kEdge = 6;
    const QRect page = world.scene->page();
    Captures::drag(world, page.adjusted(kEdge, kEdge, -kEdge, -kEdge));
    Bars::press(world.person, desktop::Buttons::kReadText);
    require(world.person.sessionIsOver(), QStringLiteral("no text is read"));
    world.session.reset();
    world.ledger->copiesText(Scene::sentence());
}

bool mayBePinned(const World& world)
{
    constexpr std::size_t kMost = 3; // at a time
    return Captures::barsHaveRoom(world) && world.pins.size() < kMost &&
           world.isFreeForPin(world.session->area);
}

bool filesAreTaken(const World& world)
{
    return !world.ledger->refusesFiles();
}

std::vector<Step> sessionSteps()
{
    return {
        {"drags an area where there is room", Situation::session, 8, Captures::dragRoomy},
        {"drags an area anywhere", Situation::session, 3, Captures::dragAnywhere},
        {"clicks a window", Situation::session, 2, clickWindow, windowIsBare},
        {"reads a text", Situation::session, 1, readText, pageIsBare},
        {"leaves by Escape, nothing selected", Situation::session, 1, Captures::escape},
    };
}

std::vector<Step> selectedSteps()
{
    return {
        {"takes the area by Return", Situation::selected, 4,
         [](World& world) { Captures::take(world); }},
        {"takes the area by Ctrl+C", Situation::selected, 1,
         [](World& world) {
             Captures::take(world, {Qt::Key_Control, Qt::Key_C});
         }},
        {"takes the area by the copy button", Situation::selected, 1, pressCopy,
         Captures::barsHaveRoom},
        {"leaves by Escape, an area selected", Situation::selected, 2, Captures::escape},
        {"asks where to save", Situation::selected, 2, Captures::openPanel, filesAreTaken},
        {"pins the area", Situation::selected, 6, Captures::pin, mayBePinned},
        {"nudges the area by a key", Situation::selected, 2, nudge, mayBeNudged},
        {"drags the area's corner", Situation::selected, 2, dragCorner, mayBeNudged},
    };
}

} // namespace

std::vector<Step> captureSteps()
{
    std::vector<Step> steps{
        {"whole screen by key", Situation::rest, 4,
         [](World& world) { Captures::fullScreen(world, Trigger::key); }},
        {"whole screen by command", Situation::rest, 2,
         [](World& world) { Captures::fullScreen(world, Trigger::command); }},
        {"whole screen by the tray", Situation::rest, 1,
         [](World& world) { Captures::fullScreen(world, Trigger::tray); }},
        {"area by key", Situation::rest, 10,
         [](World& world) { Captures::open(world, Trigger::key); }},
        {"area by command", Situation::rest, 4,
         [](World& world) { Captures::open(world, Trigger::command); }},
        {"area by the tray", Situation::rest, 2,
         [](World& world) { Captures::open(world, Trigger::tray); }},
        {"saves under a name", Situation::panel, 3, Captures::saveUnderAName},
        {"closes the panel", Situation::panel, 1, Captures::closePanel},
    };
    for (const auto& more : {sessionSteps(), selectedSteps()})
        steps.insert(steps.end(), more.begin(), more.end());
    return steps;
}

} // namespace brindlecam::soak
