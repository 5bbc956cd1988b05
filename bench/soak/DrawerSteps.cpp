#include "Drawers.h"
#include "Failure.h"
#include "Steps.h"

#include <QDateTime>
#include <QFileInfo>
#include <QUrl>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

/// Nothing lies there but the wallpaper.
constexpr QPoint kAside{640, 20};

Drawer& drawerOf(World& world)
{
    return *world.drawer;
}

const Drawer::Tile& focusedTile(World& world)
{
    const Drawer& drawer = drawerOf(world);
    return drawer.tiles.at(static_cast<std::size_t>(drawer.focused));
}

const Drawer::Tile& tileAt(World& world, int index)
{
    return drawerOf(world).tiles.at(static_cast<std::size_t>(index));
}

bool hasTiles(const World& world)
{
    return world.drawer->count() > 0;
}

bool hasTilesInSight(const World& world)
{
    return !world.drawer->inSight().empty();
}

void copiesByAnotherFirst(World& world)
{
    const QString text = QStringLiteral("not a tile's picture");
    world.person.desktop().copyElsewhere(text);
    world.ledger->othersCopy(text);
}

// Closing.

void pressElsewhere(World& world)
{
    world.person.input().click(kAside);
    Drawers::awaitGone(world);
}

template <Trigger trigger>
void pullAgain(World& world)
{
    Drawers::pull(world, trigger);
    Drawers::awaitGone(world);
}

// It is in no picture.

void takeArea(World& world)
{
    const Picture below = world.drawer->below;
    Captures::begin(world, below, world.chance.oneIn(2) ? Trigger::key : Trigger::command);
    Drawers::awaitGone(world);
}

void takeScreen(World& world)
{
    const Drawer drawer = *world.drawer;
    // Pictures of the screen with the pointer on it.
    world.person.input().moveTo(drawer.place().center());
    Captures::takeScreen(world, drawer.below, drawer.monitor,
                         world.chance.oneIn(2) ? Trigger::key : Trigger::command);
    Drawers::awaitGone(world);
}

// Walking.

void walkByKeys(World& world)
{
    Drawer& drawer = drawerOf(world);
    for (int left = world.chance.between(1, 4); left > 0; --left) {
        switch (world.chance.below(4)) {
        case 0:
            world.person.input().tap(Qt::Key_Home);
            drawer.focus(0);
            break;
        case 1:
            world.person.input().tap(Qt::Key_End);
            drawer.focus(drawer.count() - 1);
            break;
        case 2:
            world.person.input().tap(Qt::Key_Left);
            drawer.focus(drawer.focused - 1);
            break;
        default:
            world.person.input().tap(Qt::Key_Right);
            drawer.focus(drawer.focused + 1);
        }
    }
}

void scroll(World& world)
{
    constexpr int kNotch = 111;
    Drawer& drawer = drawerOf(world);
    const bool on = world.chance.oneIn(2);
    for (int left = world.chance.between(1, 6); left > 0; --left) {
        world.person.input().click(drawer.row().center(),
                                   on ? desktop::Button::wheelDown : desktop::Button::wheelUp);
        drawer.scrollTo(drawer.scrolled + (on ? kNotch : -kNotch));
    }
}

// Copying.

void copyByClick(World& world)
{
    copiesByAnotherFirst(world);
    const int chosen = world.chance.oneOf(world.drawer->inSight());
    world.person.input().click(world.drawer->tile(chosen).center());
    world.ledger->takes(tileAt(world, chosen).picture, {});
    Drawers::awaitGone(world);
}

void copyByReturn(World& world)
{
    copiesByAnotherFirst(world);
    Drawers::focusAny(world);
    world.person.input().tap(Qt::Key_Return);
    world.ledger->takes(focusedTile(world).picture, {});
    Drawers::awaitGone(world);
}

void copyByMenu(World& world)
{
    copiesByAnotherFirst(world);
    const int chosen =
        Drawers::chooseInMenu(world, "Copiar", [&](int) { return world.person.drawers().empty(); });
    world.ledger->takes(tileAt(world, chosen).picture, {});
    Drawers::awaitGone(world);
}

// Looking.

void lookAtItLarge(World& world)
{
    Drawers::focusAny(world);
    const Picture picture = focusedTile(world).picture;
    world.person.input().tap(Qt::Key_Space);
    Drawers::awaitGone(world);
    require(world.person.dialogHasKeyboard(), QStringLiteral("no large preview comes"));
    const QPoint middle = world.person.dialogs().front().pixels.center();
    // Pixel by pixel where there is room.
    constexpr QSize kSurelyFits(200, 140);
    QRect part(QPoint(), kSurelyFits.boundedTo(picture.pixels.size()));
    part.moveCenter(picture.pixels.rect().center());
    const bool fits = picture.pixels.width() < world.monitors.front().width() / 2 &&
                      picture.pixels.height() < world.monitors.front().height() / 2;
    const QPoint shift = middle - picture.pixels.rect().center();
    const auto isShown = [&] {
        // The middle of an even number of pixels is either of two.
        for (const QPoint by : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
            if (picture.part(part).isShownBy(
                    world.person.screen().grab(part.translated(shift + by))))
                return true;
        }
        return false;
    };
    require(!fits || desktop::waitUntil(isShown), QStringLiteral("another picture is previewed"));
    world.person.input().tap(world.chance.oneIn(2) ? Qt::Key_Space : Qt::Key_Escape);
    require(world.person.dialogsAreGone(), QStringLiteral("the large preview stays"));
}

// Removing.

void isRemoved(World& world, int index)
{
    const QString path = tileAt(world, index).path;
    world.ledger->history().goes(path);
    world.removed << QFileInfo(path).fileName();
    drawerOf(world).remove(index);
}

/// Presses Delete until the question is there: a window manager that answers late may take the
/// keyboard once more.
void askToRemove(World& world)
{
    constexpr int kAnswer = 1000; // ms
    Drawers::focusAny(world);
    const auto isAsked = [&] {
        world.person.input().tap(Qt::Key_Delete);
        return desktop::waitUntil([&] { return !world.person.dialogs().empty(); }, kAnswer);
    };
    require(desktop::waitUntil(isAsked) && world.person.dialogHasKeyboard(),
            QStringLiteral("nobody asks whether to remove a capture"));
}

void answer(World& world, Qt::Key key)
{
    world.person.input().tap(key);
    require(world.person.dialogsAreGone(), QStringLiteral("the question stays"));
}

void answerAboutATile(World& world, Qt::Key key)
{
    answer(world, key);
    require(world.person.drawerHasKeyboard(), QStringLiteral("the drawer has lost the keyboard"));
}

void removeByDelete(World& world)
{
    askToRemove(world);
    answerAboutATile(world, Qt::Key_Return);
    isRemoved(world, world.drawer->focused);
}

void keepAfterAll(World& world)
{
    askToRemove(world);
    answerAboutATile(world, Qt::Key_Escape);
}

void removeByMenu(World& world)
{
    const int chosen = Drawers::chooseInMenu(world, "Quitar de recientes", [&](int index) {
        return !QFileInfo::exists(tileAt(world, index).path);
    });
    isRemoved(world, chosen);
}

// Elsewhere.

/// Saved within the same second as another file it would have that one's name, and is refused.
void awaitAnotherSecond(const World& world)
{
    const auto isAnother = [&] {
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        const auto files = world.ledger->files().newestFirst();
        return files.empty() || QFileInfo(files.first()).lastModified().toSecsSinceEpoch() != now;
    };
    require(desktop::waitUntil(isAnother), QStringLiteral("time stands still"));
}

void saveByMenu(World& world)
{
    awaitAnotherSecond(world);
    const auto before = world.ledger->files().filesNow();
    const int chosen = Drawers::chooseInMenu(world, "Guardar en la carpeta de capturas", [&](int) {
        return world.ledger->files().filesNow() > before;
    });
    world.ledger->takes(tileAt(world, chosen).picture, {.clipboard = false, .file = true});
}

bool filesAreTaken(const World& world)
{
    return hasTilesInSight(world) && !world.ledger->refusesFiles();
}

void dragOut(World& world)
{
    constexpr QRect kTarget{100, 230, 180, 120};
    const auto target = world.person.desktop().openDropTarget(kTarget, desktop::DropManners::takes);
    const int chosen = world.chance.oneOf(world.drawer->inSight());
    desktop::Input& input = world.person.input();
    input.moveTo(world.drawer->tile(chosen).center());
    input.press(desktop::Button::left);
    input.glideTo(kTarget.center(), 20);
    const auto isNoticed = [&] {
        input.glideTo(kTarget.center() + QPoint(5, 0), 2);
        input.glideTo(kTarget.center(), 2);
        return target->wasEntered();
    };
    require(desktop::waitUntil(isNoticed), QStringLiteral("nobody notices a drag"));
    input.release(desktop::Button::left);
    require(desktop::waitUntil([&] { return target->dropped().has_value(); }),
            QStringLiteral("a drop comes to nobody"));
    require(target->dropped()->trimmed() ==
                QUrl::fromLocalFile(tileAt(world, chosen).path).toEncoded(),
            QStringLiteral("another file is dropped"));
    Drawers::awaitGone(world);
}

// All of them.

void askToClear(World& world)
{
    require(world.person.press("Vaciar"), QStringLiteral("there is no button to empty it"));
    Drawers::awaitGone(world);
    require(world.person.dialogHasKeyboard(), QStringLiteral("nobody asks whether to empty it"));
}

void clear(World& world)
{
    askToClear(world);
    answer(world, Qt::Key_Return);
    for (const QString& path : world.ledger->history().newestFirst())
        world.removed << QFileInfo(path).fileName();
    world.ledger->history().allGo();
}

void clearNot(World& world)
{
    askToClear(world);
    answer(world, Qt::Key_Escape);
}

std::vector<Step> tileSteps()
{
    constexpr auto kOpen = Situation::drawer;
    return {
        {"walks the drawer by keys", kOpen, 5, walkByKeys, hasTiles},
        {"scrolls the drawer", kOpen, 3, scroll, hasTiles},
        {"copies a tile by a click", kOpen, 2, copyByClick, hasTilesInSight},
        {"copies a tile by Return", kOpen, 2, copyByReturn, hasTiles},
        {"copies a tile by its menu", kOpen, 1, copyByMenu, hasTilesInSight},
        {"looks at a capture large", kOpen, 2, lookAtItLarge, hasTiles},
        {"removes a capture by Delete", kOpen, 2, removeByDelete, hasTiles},
        {"keeps a capture after Delete", kOpen, 1, keepAfterAll, hasTiles},
        {"removes a capture by its menu", kOpen, 1, removeByMenu, hasTilesInSight},
        {"saves a capture by its menu", kOpen, 2, saveByMenu, filesAreTaken},
        {"drags a capture to another window", kOpen, 2, dragOut, hasTilesInSight},
        {"empties the history", kOpen, 1, clear, hasTilesInSight},
        {"does not empty the history after all", kOpen, 1, clearNot, hasTilesInSight},
    };
}

} // namespace

std::vector<Step> drawerSteps()
{
    std::vector<Step> steps{
        {"opens the drawer by key", Situation::rest, 6,
         [](World& world) { Drawers::open(world, Trigger::key); }},
        {"opens the drawer by command", Situation::rest, 3,
         [](World& world) { Drawers::open(world, Trigger::command); }},
        {"opens the drawer by the tray", Situation::rest, 1,
         [](World& world) { Drawers::open(world, Trigger::tray); }},
        {"closes the drawer by Escape", Situation::drawer, 1, Drawers::closeByEscape},
        {"closes the drawer by a press elsewhere", Situation::drawer, 1, pressElsewhere},
        {"closes the drawer by its key", Situation::drawer, 1, pullAgain<Trigger::key>},
        {"closes the drawer by its command", Situation::drawer, 1, pullAgain<Trigger::command>},
        {"begins an area over the drawer", Situation::drawer, 2, takeArea},
        {"takes the screen over the drawer", Situation::drawer, 2, takeScreen},
    };
    for (const Step& step : tileSteps())
        steps.push_back(step);
    return steps;
}

} // namespace brindlecam::soak
