#include "Drawers.h"

#include "Failure.h"
#include "Runs.h"

#include <algorithm>

namespace brindlecam::soak::Drawers {

namespace {

/// Where a thumbnail is thinner, half a pixel makes another picture of it.
constexpr int kTellable = 48; // pixels

std::vector<Drawer::Tile> tilesOf(const World& world)
{
    std::vector<Drawer::Tile> tiles;
    if (world.ledger->refusesHistory())
        return tiles;
    for (const QString& path : world.ledger->history().newestFirst())
        tiles.push_back({.path = path, .picture = Picture::exactly(QImage(path))});
    return tiles;
}

/// Whether this tile has the outline of the one with the keys, or under the pointer.
bool isOutlined(World& world, int index)
{
    constexpr int kMuch = 60; // of a channel
    const QRect place = world.drawer->tile(index);
    const QColor edge = world.person.screen().pixel({place.left() + 1, place.center().y()});
    return edge.green() > edge.red() + kMuch && edge.green() > edge.blue() + kMuch;
}

void awaitKeyboard(World& world)
{
    require(world.person.drawerHasKeyboard(), QStringLiteral("the drawer has no keyboard"));
}

} // namespace

void pull(World& world, Captures::Trigger trigger)
{
    switch (trigger) {
    case Captures::Trigger::key:
        world.person.pressHotKey(Person::kRecentsKey);
        return;
    case Captures::Trigger::command:
        require(world.person.program().command({QStringLiteral("recents")}).exitCode == 0,
                QStringLiteral("the command for the drawer is refused"));
        return;
    case Captures::Trigger::tray:
        Runs::chooseInTray(world, "Capturas recientes");
        return;
    }
}

void open(World& world, Captures::Trigger trigger)
{
    openOn(world, world.chance.oneOf(world.monitors), trigger);
}

void openOn(World& world, const QRect& monitor, Captures::Trigger trigger)
{
    world.ledger->verify(world.person.desktop().clipboard()); // what is on its way is listed, too
    Drawer drawer{.below = world.freeze(monitor), .monitor = monitor, .tiles = tilesOf(world)};
    pull(world, trigger);
    world.drawer = std::move(drawer);
    awaitKeyboard(world);
    awaitStands(world);
}

void awaitStands(World& world)
{
    QString strange;
    const auto stands = [&] {
        strange = strangeness(world);
        return strange.isEmpty();
    };
    const bool isRight = desktop::waitUntil(stands);
    require(isRight, QStringLiteral("the drawer does not stand as it should: %1").arg(strange));
}

void awaitGone(World& world)
{
    const bool isGone = desktop::waitUntil([&] { return world.person.drawers().empty(); });
    require(isGone, QStringLiteral("the drawer stays"));
    world.drawer.reset();
}

void closeByEscape(World& world)
{
    world.person.input().tap(Qt::Key_Escape);
    awaitGone(world);
}

QString strangeness(World& world)
{
    const Drawer& drawer = *world.drawer;
    const auto all = world.person.drawers();
    if (all.size() != 1 || all.front().pixels != drawer.place()) {
        const QRect found = all.empty() ? QRect() : all.front().pixels;
        return QStringLiteral("%1 drawers, %2 x %3 at %4, %5")
            .arg(all.size())
            .arg(found.width())
            .arg(found.height())
            .arg(found.x())
            .arg(found.y());
    }
    const QPoint pointer = world.person.input().pointer();
    for (const int index : drawer.inSight()) {
        const bool hasKeys = index == drawer.focused;
        if (isOutlined(world, index) != hasKeys && !drawer.tile(index).contains(pointer))
            return QStringLiteral("the keys are %1 tile %2")
                .arg(hasKeys ? QStringLiteral("not with") : QStringLiteral("with"))
                .arg(index);
        const Drawer::Tile& tile = drawer.tiles.at(static_cast<std::size_t>(index));
        const QRect place = drawer.thumbnail(index);
        if (std::min(place.width(), place.height()) >= kTellable &&
            !tile.picture.resembles(world.person.screen().grab(place)))
            return QStringLiteral(
                       "another picture in tile %1 of %2, scrolled by %3, the keys at %4")
                .arg(index)
                .arg(drawer.count())
                .arg(drawer.scrolled)
                .arg(drawer.focused);
    }
    return {};
}

void focusAny(World& world)
{
    Drawer& drawer = *world.drawer;
    const int wanted = world.chance.below(drawer.count());
    awaitKeyboard(world);
    do {
        const bool left = drawer.focused > wanted;
        world.person.input().tap(left ? Qt::Key_Left : Qt::Key_Right);
        drawer.focus(drawer.focused + (left ? -1 : 1));
    } while (drawer.focused != wanted);
}

int chooseInMenu(World& world, const char* entry, const std::function<bool(int tile)>& happens)
{
    constexpr int kAnswer = 5000; // ms
    const Drawer& drawer = *world.drawer;
    const int chosen = world.chance.oneOf(drawer.inSight());
    // Without a window manager Qt may close the menu, the choice lost: a person opens it again.
    const auto isChosen = [&] {
        require(world.person.openMenu(drawer.tile(chosen).center()),
                QStringLiteral("no menu opens over a tile"));
        world.person.choose(entry);
        require(desktop::waitUntil([&] { return world.person.menus().empty(); }),
                QStringLiteral("the menu stays"));
        return desktop::waitUntil([&] { return happens(chosen); }, kAnswer);
    };
    require(desktop::waitUntil(isChosen),
            QStringLiteral("nothing comes of a tile's menu: %1").arg(QString::fromUtf8(entry)));
    return chosen;
}

} // namespace brindlecam::soak::Drawers
