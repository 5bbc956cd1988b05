#include "platform/Displays.h"

namespace brindlecam {

std::optional<ScreenInfo> screenUnderPointer(const Displays& displays)
{
    const std::vector<ScreenInfo> screens = displays.screens();
    if (const std::optional<QPoint> pointer = displays.pointer()) {
        for (const ScreenInfo& screen : screens) {
            if (screen.native.contains(*pointer))
                return screen;
        }
    }
    return screens.empty() ? std::nullopt : std::optional(screens.front());
}

} // namespace brindlecam
