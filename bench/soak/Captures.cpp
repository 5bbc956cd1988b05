#include "Captures.h"

#include "Bars.h"
#include "Drawers.h"
#include "Failure.h"
#include "Runs.h"
#include "SettingsWindows.h"

#include "desktop/support/Buttons.h"

#include <algorithm>

namespace brindlecam::soak::Captures {

namespace {

constexpr QSize kLeast{60, 50}; // of an area
/// What the frame, its handles and the bars leave free of an area, as far as they reach inside.
constexpr int kHandles = 14;

QRect inner(const QRect& area)
{
    return QRect(QPoint(), area.size()).adjusted(kHandles, kHandles, -kHandles, -kHandles);
}

void run(World& world, const QString& command)
{
    const auto result = world.person.program().command({command});
    require(result.exitCode == 0, QStringLiteral("the command %1 ends with code %2: %3")
                                      .arg(command)
                                      .arg(result.exitCode)
                                      .arg(result.error));
}

void pull(World& world, Trigger trigger, Qt::Key key, const char* command, const char* entry)
{
    switch (trigger) {
    case Trigger::key:
        world.person.pressHotKey(key);
        return;
    case Trigger::command:
        run(world, QString::fromLatin1(command));
        return;
    case Trigger::tray:
        Runs::chooseInTray(world, entry);
        return;
    }
}

/// After the end of a session: where its picture went.
void books(World& world, const Picture& picture, Places places)
{
    places.history = places.history && world.settings.keepHistory;
    world.ledger->takes(picture, places);
    world.session.reset();
}

void copiedLive(World& world, const Picture& picture)
{
    world.session->live = picture;
    world.ledger->takes(picture, {});
}

/// Comes to rest from wherever somebody is.
void leave(World& world)
{
    switch (world.situation()) {
    case Situation::rest:
        return;
    case Situation::session:
    case Situation::selected:
        escape(world);
        return;
    case Situation::panel:
        closePanel(world);
        return;
    case Situation::drawer:
        Drawers::closeByEscape(world);
        return;
    case Situation::settings:
        SettingsWindows::close(world);
        return;
    }
}

void awaitEnd(World& world)
{
    require(world.person.sessionIsOver(), QStringLiteral("the session does not end"));
}

} // namespace

void open(World& world, Trigger trigger)
{
    const QRect monitor = world.chance.oneOf(world.monitors);
    begin(world, world.freeze(monitor), trigger);
}

void begin(World& world, const Picture& frozen, Trigger trigger)
{
    pull(world, trigger, desktop::kAreaKey, "area", "Capturar área");
    const bool isReady = world.person.sessionIsReady(world.monitors.size());
    require(isReady,
            QStringLiteral("no session opens: %1 overlays").arg(world.person.overlays().size()));
    world.session = Session{.frozen = frozen};
}

void drag(World& world, const QRect& area)
{
    world.person.select(area);
    areaIs(world, area);
}

void dragRoomy(World& world)
{
    // Pins are made of some of them.
    const QRect monitor = world.monitors.front();
    QRect area;
    do {
        area = world.chance.rectIn(world.chance.oneIn(2) ? Scene::kForPins : monitor, kLeast,
                                   {500, 340});
    } while (!Bars::haveRoom(area, monitor));
    drag(world, area);
}

void dragAnywhere(World& world)
{
    // At the last pixels the edge of the screen is meant.
    const QRect monitor = world.chance.oneOf(world.monitors).adjusted(0, 0, -2, -2);
    drag(world, world.chance.rectIn(monitor, kLeast, monitor.size()));
}

void areaIs(World& world, const QRect& area)
{
    Session& session = *world.session;
    session.stage = Situation::selected;
    session.area = area;
    if (world.settings.autoCopy)
        copiedLive(world, session.frozen.part(area));
}

bool barsHaveRoom(const World& world)
{
    return world.session && world.session->stage == Situation::selected &&
           Bars::haveRoom(world.session->area, world.monitors.front());
}

Picture selected(World& world)
{
    const Session& session = *world.session;
    if (session.live)
        return *session.live;
    if (session.marks == 0)
        return session.frozen.part(session.area);
    return {world.person.screen().grab(session.area), inner(session.area)};
}

void pictureChanged(World& world)
{
    if (!world.settings.autoCopy)
        return;
    // The mark is seen a moment before it is copied, or after.
    world.session->live.reset();
    QImage copied;
    Picture seen;
    const auto agree = [&] {
        copied = world.person.desktop().clipboard().picture();
        seen = selected(world);
        return seen.isShownBy(copied);
    };
    if (!desktop::waitUntil(agree)) {
        throw Failure{.what = QStringLiteral("the clipboard: not what is seen of the marks"),
                      .wanted = seen.pixels,
                      .found = copied};
    }
    copiedLive(world, Picture::exactly(copied));
}

void take(World& world, const QList<Qt::Key>& keys)
{
    const Picture picture = selected(world);
    world.person.input().chord(keys);
    awaitEnd(world);
    booksTaken(world, picture);
}

void booksTaken(World& world, const Picture& picture)
{
    books(world, picture, {.file = world.settings.autoSaveArea, .history = true});
}

void escape(World& world)
{
    keepLiveCopy(world);
    // A text that is being typed and a popup with the keys close first.
    constexpr int kEnds = 1000; // ms
    const auto ends = [&] {
        world.person.input().tap(Qt::Key_Escape);
        return desktop::waitUntil([&] { return world.person.overlays().empty(); }, kEnds);
    };
    require(desktop::waitUntil(ends), QStringLiteral("the session does not end by Escape"));
}

void keepLiveCopy(World& world)
{
    const auto live = world.session ? world.session->live : std::nullopt;
    world.session.reset();
    if (live && world.settings.keepHistory)
        world.ledger->takes(*live, {.clipboard = false, .history = true});
}

void pin(World& world)
{
    const QRect area = world.session->area;
    const Picture picture = selected(world);
    Bars::press(world.person, desktop::Buttons::kPin);
    awaitEnd(world);
    books(world, picture, {.history = true});
    world.person.input().moveTo(world.monitors.front().bottomLeft() + QPoint(20, -20));
    const auto stands = [&] {
        const auto all = world.person.pins();
        return std::ranges::count(all, area, &desktop::SeenWindow::pixels) == 1;
    };
    require(desktop::waitUntil(stands), QStringLiteral("no pin comes"));
    world.pins.push_back({.place = area, .picture = picture});
}

void openPanel(World& world)
{
    const Picture picture = selected(world);
    world.person.input().chord({Qt::Key_Control, Qt::Key_S});
    require(world.person.dialogHasKeyboard(), QStringLiteral("no panel comes"));
    books(world, picture, {.clipboard = false, .history = true});
    world.session = Session{.stage = Situation::panel, .frozen = picture};
}

void saveUnderAName(World& world)
{
    world.person.input().type("captura " + std::to_string(world.step));
    world.person.input().tap(Qt::Key_Return);
    require(world.person.dialogsAreGone(), QStringLiteral("the panel stays"));
    world.ledger->takes(world.session->frozen, {.clipboard = false, .file = true});
    world.session.reset();
}

void closePanel(World& world)
{
    world.person.input().tap(Qt::Key_Escape);
    require(world.person.dialogsAreGone(), QStringLiteral("the panel stays"));
    world.session.reset();
}

void fullScreen(World& world, Trigger trigger)
{
    const QRect monitor = world.chance.oneOf(world.monitors);
    takeScreen(world, world.freeze(monitor), monitor, trigger);
}

void takeScreen(World& world, const Picture& frozen, const QRect& monitor, Trigger trigger)
{
    pull(world, trigger, desktop::kFullScreenKey, "fullScreen", "Capturar pantalla completa");
    books(world, frozen.part(monitor),
          {.file = world.settings.autoSaveFullScreen, .history = true});
}

void reach(World& world, Situation wanted)
{
    if (world.situation() == wanted)
        return;
    switch (wanted) {
    case Situation::rest:
        leave(world);
        return;
    case Situation::session:
        reach(world, Situation::rest);
        open(world, Trigger::command);
        return;
    case Situation::selected:
        if (world.situation() != Situation::session)
            reach(world, Situation::session);
        dragRoomy(world);
        return;
    case Situation::panel:
        reach(world, Situation::selected);
        openPanel(world);
        return;
    case Situation::drawer:
        reach(world, Situation::rest);
        Drawers::open(world, Trigger::command);
        return;
    case Situation::settings:
        reach(world, Situation::rest);
        SettingsWindows::open(world, SettingsWindows::Trigger::command);
        return;
    }
}

void reachBars(World& world)
{
    if (barsHaveRoom(world))
        return;
    reach(world, Situation::rest);
    reach(world, Situation::selected);
}

} // namespace brindlecam::soak::Captures
