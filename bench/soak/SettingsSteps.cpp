#include "Captures.h"
#include "Failure.h"
#include "SettingsWindows.h"
#include "Steps.h"

#include <cmath>

namespace brindlecam::soak {

namespace {

using SettingsWindows::Trigger;

/// A box, and what it sets.
struct Box {
    const char* name;
    const char* key;
    bool Settings::*value;
};

const std::vector<Box> kBoxes{
    {"Copiar al portapapeles automáticamente al seleccionar", "autoCopy", &Settings::autoCopy},
    {"Guardar también la pantalla completa como archivo PNG", "autoSaveFullScreen",
     &Settings::autoSaveFullScreen},
    {"Guardar también las capturas de área", "autoSaveArea", &Settings::autoSaveArea},
    {"Mostrar lupa de píxeles al elegir el área", "showLoupe", &Settings::showLoupe},
};

QRect placeOf(World& world, const char* name)
{
    const QRect place = world.person.placeOf(name);
    require(place.isValid(),
            QStringLiteral("the settings have no %1").arg(QString::fromUtf8(name)));
    return place;
}

void awaitStored(World& world, const char* key, bool value)
{
    const auto isStored = [&] {
        return world.person.program().settings().value(QLatin1String(key)).toBool(true) == value;
    };
    require(desktop::waitUntil(isStored),
            QStringLiteral("a setting is not stored: %1").arg(QLatin1String(key)));
}

void click(World& world, const Box& box)
{
    world.person.input().click(placeOf(world, box.name).center());
    bool& value = world.settings.*box.value;
    value = !value;
    awaitStored(world, box.key, value);
}

void clickBox(World& world)
{
    click(world, world.chance.oneOf(kBoxes));
}

void clickBoxTwice(World& world)
{
    const Box& box = world.chance.oneOf(kBoxes);
    click(world, box);
    click(world, box);
}

/// Without it a question comes, whether to be rid of what is there, unless that is nothing.
void turnHistoryOffAndOn(World& world)
{
    const Box box{"Guardar historial para el cajón de capturas recientes", "keepHistory",
                  &Settings::keepHistory};
    for (int i = 0; i < 2; ++i) {
        click(world, box);
        const bool hasEntries =
            !world.ledger->refusesHistory() && world.ledger->history().count() > 0;
        if (world.settings.keepHistory || !hasEntries)
            continue;
        require(world.person.dialogHasKeyboard(),
                QStringLiteral("nobody asks whether to empty the history"));
        world.person.input().tap(Qt::Key_Escape);
        require(world.person.dialogsAreGone(), QStringLiteral("the question stays"));
    }
}

void recordNothing(World& world)
{
    static const std::vector<const char*> kNames{"Capturar área", "Capturar pantalla completa",
                                                 "Capturas recientes"};
    require(world.person.press(world.chance.oneOf(kNames)), QStringLiteral("no shortcut is shown"));
    const auto rival = world.person.desktop().rival();
    require(desktop::waitUntil([&] {
                return !rival->isHotKeyTaken(desktop::kAreaKey, desktop::kHotKeyModifiers);
            }),
            QStringLiteral("the hot keys are kept while a shortcut is recorded"));
    world.person.input().tap(Qt::Key_Escape);
    require(desktop::waitUntil([&] { return desktop::areHotKeysTaken(*rival); }),
            QStringLiteral("the hot keys are not taken again"));
}

void moveMarker(World& world)
{
    constexpr double kStandard = 0.4;
    constexpr double kHigh = 0.6;
    constexpr double kClose = 0.001;
    const auto opacity = [&] {
        return world.person.program()
            .settings()
            .value(QStringLiteral("markerOpacity"))
            .toDouble(kStandard);
    };
    const QPoint slider = placeOf(world, "Opacidad del marcador").center();
    const double before = opacity();
    const bool down = before > kHigh;
    for (const bool first : {true, false}) {
        world.person.input().click(slider, down == first ? desktop::Button::wheelDown
                                                         : desktop::Button::wheelUp);
        const auto follows = [&] { return (std::abs(opacity() - before) > kClose) == first; };
        require(desktop::waitUntil(follows), QStringLiteral("the marker does not follow"));
    }
}

void takeScreen(World& world)
{
    Captures::fullScreen(world, Captures::Trigger::key);
}

void openOnceMore(World& world)
{
    SettingsWindows::open(world, Trigger::command);
}

bool hasNoPins(const World& world)
{
    return world.pins.empty();
}

} // namespace

std::vector<Step> settingsSteps()
{
    constexpr auto kOpen = Situation::settings;
    return {
        {"opens the settings by command", Situation::rest, 3,
         [](World& world) { SettingsWindows::open(world, Trigger::command); }, hasNoPins},
        {"opens the settings by the tray", Situation::rest, 2,
         [](World& world) { SettingsWindows::open(world, Trigger::tray); }, hasNoPins},
        {"asks for the settings once more", kOpen, 1, openOnceMore},
        {"clicks a box of the settings", kOpen, 2, clickBox},
        {"clicks a box of the settings twice", kOpen, 2, clickBoxTwice},
        {"turns the history off and on", kOpen, 1, turnHistoryOffAndOn},
        {"records no shortcut after all", kOpen, 2, recordNothing},
        {"moves the marker there and back", kOpen, 2, moveMarker},
        {"takes the screen with the settings", kOpen, 1, takeScreen},
        {"closes the settings", kOpen, 4, SettingsWindows::close},
    };
}

} // namespace brindlecam::soak
