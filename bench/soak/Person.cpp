#include "Person.h"

#include <algorithm>
#include <csignal>

namespace brindlecam::soak {

bool Person::isDrawer(const desktop::SeenWindow& window)
{
    return window.title == QStringLiteral("Capturas recientes");
}

std::vector<desktop::SeenWindow> Person::pins()
{
    auto all = CaptureTest::pins();
    std::erase_if(all, isDrawer);
    return all;
}

std::vector<desktop::SeenWindow> Person::drawers()
{
    auto all = CaptureTest::pins();
    std::erase_if(all, [](const auto& window) { return !isDrawer(window); });
    return all;
}

bool Person::drawerHasKeyboard()
{
    return haveKeyboard([this] { return drawers(); });
}

std::vector<desktop::SeenWindow> Person::settingsWindows()
{
    auto all = windows().shown(program().pid(), desktop::Role::other);
    std::erase_if(all, [](const auto& window) {
        return window.title != QStringLiteral("Configuración de Brindlecam");
    });
    return all;
}

bool Person::settingsHaveKeyboard()
{
    return haveKeyboard([this] { return settingsWindows(); });
}

bool Person::haveKeyboard(const std::function<std::vector<desktop::SeenWindow>()>& all)
{
    return desktop::waitUntil([&] {
        const auto now = all();
        return std::ranges::count(now, windows().focused(), &desktop::SeenWindow::id) == 1;
    });
}

void Person::signalProgram(int number)
{
    ::kill(static_cast<pid_t>(program().pid()), number);
}

} // namespace brindlecam::soak
