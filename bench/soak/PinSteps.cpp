#include "Captures.h"
#include "Failure.h"
#include "Steps.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace brindlecam::soak {

namespace {

Pin& anyOf(World& world)
{
    return world
        .pins[static_cast<std::size_t>(world.chance.below(static_cast<int>(world.pins.size())))];
}

void lookAway(World& world)
{
    world.person.input().moveTo(world.monitors.front().bottomLeft() + QPoint(20, -20));
}

/// Where the pins are, for people.
QString places(World& world)
{
    QStringList all;
    for (const desktop::SeenWindow& pin : world.person.pins()) {
        all << QStringLiteral("%1 x %2 at %3, %4")
                   .arg(pin.pixels.width())
                   .arg(pin.pixels.height())
                   .arg(pin.pixels.x())
                   .arg(pin.pixels.y());
    }
    return all.join(QStringLiteral("; "));
}

void awaitAt(World& world, const QRect& place)
{
    const bool comes = desktop::waitUntil([&] {
        const auto all = world.person.pins();
        return std::ranges::count(all, place, &desktop::SeenWindow::pixels) > 0;
    });
    require(comes, QStringLiteral("a pin does not come along to %1, %2: %3")
                       .arg(place.x())
                       .arg(place.y())
                       .arg(places(world)));
}

void forget(World& world, const Pin& pin)
{
    std::erase_if(world.pins, [&pin](const Pin& other) { return &other == &pin; });
}

void move(World& world)
{
    constexpr int kTries = 40;
    Pin& pin = anyOf(world);
    QRect place;
    for (int i = 0; i < kTries && (place.isNull() || !world.isFreeForPin(place, &pin)); ++i)
        place = QRect(world.chance.pointIn(Scene::kForPins), pin.place.size());
    if (!world.isFreeForPin(place, &pin))
        return;
    const QPoint from = pin.place.center();
    world.person.input().drag(from, from + place.topLeft() - pin.place.topLeft());
    awaitAt(world, place);
    pin.place = place;
    lookAway(world);
}

/// What a pin's width is after so many notches, as far as that can be told from outside.
double scaleAfter(double scale, int notches, bool up)
{
    constexpr double kUp = 1.05;
    constexpr double kDown = 0.95;
    constexpr double kLeast = 0.2;
    constexpr double kMost = 3;
    for (int i = 0; i < notches; ++i)
        scale = std::clamp(scale * (up ? kUp : kDown), kLeast, kMost);
    return scale;
}

void turnWheel(World& world)
{
    Pin& pin = anyOf(world);
    const int notches = world.chance.between(1, 6);
    const bool up = pin.scale <= 1 && world.chance.oneIn(2);
    const double scale = scaleAfter(pin.scale, notches, up);
    const QPoint middle = pin.place.center();
    QRect wanted(QPoint(), (QSizeF(pin.picture.pixels.size()) * scale).toSize());
    wanted.moveCenter(middle);
    if (!world.isFreeForPin(wanted.adjusted(-2, -2, 2, 2), &pin))
        return;
    for (int i = 0; i < notches; ++i)
        world.person.input().click(middle,
                                   up ? desktop::Button::wheelUp : desktop::Button::wheelDown);
    QRect place;
    const auto isSized = [&] {
        const auto all = world.person.pins();
        return std::ranges::any_of(all, [&](const desktop::SeenWindow& seen) {
            place = seen.pixels;
            return std::abs(place.width() - wanted.width()) <= 1 &&
                   std::abs(place.height() - wanted.height()) <= 1 && place.contains(middle);
        });
    };
    const bool follows = desktop::waitUntil(isSized);
    require(follows, QStringLiteral("a pin does not follow the wheel: %1").arg(places(world)));
    pin.place = place;
    pin.scale = scale;
    lookAway(world);
}

void close(World& world)
{
    const Pin& pin = anyOf(world);
    world.person.input().doubleClick(pin.place.center());
    forget(world, pin);
    lookAway(world);
}

/// Chooses from a pin's menu until something comes of it. Without a window manager the program
/// hears late that it has lost the focus, and Qt closes the menu then, the choice lost: a person
/// opens it again.
void chooseInMenu(World& world, const Pin& pin, const char* entry,
                  const std::function<bool()>& happens)
{
    constexpr int kAnswer = 5000; // ms
    const auto isChosen = [&] {
        require(world.person.openMenu(pin.place.center()), QStringLiteral("no menu opens"));
        world.person.choose(entry);
        require(desktop::waitUntil([&] { return world.person.menus().empty(); }),
                QStringLiteral("the menu stays"));
        return desktop::waitUntil(happens, kAnswer);
    };
    require(desktop::waitUntil(isChosen),
            QStringLiteral("nothing comes of a pin's menu: %1").arg(QString::fromUtf8(entry)));
    lookAway(world);
}

void copyByMenu(World& world)
{
    const Pin& pin = anyOf(world);
    world.person.desktop().copyElsewhere(QStringLiteral("not the pin's picture"));
    chooseInMenu(world, pin, "Copiar", [&] {
        return pin.picture.isShownBy(world.person.desktop().clipboard().picture());
    });
    world.ledger->takes(pin.picture, {});
}

void saveByMenu(World& world)
{
    const Pin& pin = anyOf(world);
    chooseInMenu(world, pin, "Guardar…", [&] { return !world.person.dialogs().empty(); });
    require(world.person.dialogHasKeyboard(), QStringLiteral("no panel comes"));
    world.person.input().type("pin " + std::to_string(world.step));
    world.person.input().tap(Qt::Key_Return);
    world.ledger->takes(pin.picture, {.clipboard = false, .file = true});
}

void closeByMenu(World& world)
{
    const Pin& pin = anyOf(world);
    chooseInMenu(world, pin, "Cerrar",
                 [&] { return world.person.pins().size() < world.pins.size(); });
    forget(world, pin);
}

bool hasPins(const World& world)
{
    return !world.pins.empty();
}

} // namespace

std::vector<Step> pinSteps()
{
    return {
        {"moves a pin", Situation::rest, 3, move, hasPins},
        {"resizes a pin", Situation::rest, 3, turnWheel, hasPins},
        {"closes a pin", Situation::rest, 2, close, hasPins},
        {"copies a pin by its menu", Situation::rest, 1, copyByMenu, hasPins},
        {"saves a pin by its menu", Situation::rest, 1, saveByMenu,
         [](const World& world) { return hasPins(world) && !world.ledger->refusesFiles(); }},
        {"closes a pin by its menu", Situation::rest, 1, closeByMenu, hasPins},
    };
}

} // namespace brindlecam::soak
