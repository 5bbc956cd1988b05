#include "Person.h"

#include <algorithm>
#include <csignal>

namespace brindlecam::soak {

bool Person::reads(const QString& message)
{
    return desktop::waitUntil(
        [&] { return std::ranges::count(toasts(), message, &desktop::SeenWindow::title) > 0; });
}

bool Person::dialogTakesKeys()
{
    return desktop::waitUntil([this] {
        const auto all = dialogs();
        return std::ranges::count(all, windows().focused(), &desktop::SeenWindow::id) > 0;
    });
}

void Person::signalProgram(int number)
{
    ::kill(static_cast<pid_t>(program().pid()), number);
}

} // namespace brindlecam::soak
