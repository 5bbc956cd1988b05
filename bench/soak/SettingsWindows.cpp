#include "SettingsWindows.h"

#include "Failure.h"
#include "Runs.h"
#include "World.h"

namespace brindlecam::soak::SettingsWindows {

void open(World& world, Trigger trigger)
{
    world.person.input().moveTo(world.monitors.front().bottomLeft() + QPoint(20, -20));
    require(world.person.toastIsGone(), QStringLiteral("a message stays"));
    if (trigger == Trigger::tray)
        Runs::chooseInTray(world, "Configuración…");
    else
        require(world.person.program().command({QStringLiteral("settings")}).exitCode == 0,
                QStringLiteral("the command for the settings is refused"));
    require(world.person.settingsHaveKeyboard(), QStringLiteral("no settings come"));
    world.settingsAreOpen = true;
}

void close(World& world)
{
    // Somebody else may have the keyboard by now.
    constexpr QPoint kPlain{10, 10};
    world.person.input().click(world.person.settingsWindows().front().pixels.topLeft() + kPlain);
    require(world.person.settingsHaveKeyboard(), QStringLiteral("the settings have no keyboard"));
    world.person.input().tap(Qt::Key_Escape);
    require(desktop::waitUntil([&] { return world.person.settingsWindows().empty(); }),
            QStringLiteral("the settings stay"));
    world.settingsAreOpen = false;
}

} // namespace brindlecam::soak::SettingsWindows
