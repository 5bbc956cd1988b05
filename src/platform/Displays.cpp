#include "platform/Displays.h"

#include <algorithm>

namespace brindlecam {

namespace {

std::optional<ScreenInfo> screenOf(const std::vector<ScreenInfo>& screens,
                                   const std::optional<QPoint>& place)
{
    const auto found = std::ranges::find_if(screens, [&place](const ScreenInfo& screen) {
        return place && screen.native.contains(*place);
    });
    if (found != screens.end())
        return *found;
    return screens.empty() ? std::nullopt : std::optional(screens.front());
}

} // namespace

std::optional<ScreenInfo> screenAt(const Displays& displays, QPoint place)
{
    return screenOf(displays.screens(), place);
}

std::optional<ScreenInfo> screenUnderPointer(const Displays& displays)
{
    return screenOf(displays.screens(), displays.pointer());
}

} // namespace brindlecam
