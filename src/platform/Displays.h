#pragma once

#include "base/ScreenInfo.h"

#include <functional>
#include <optional>
#include <vector>

class QObject;

namespace brindlecam {

/// The displays of the desktop and the pointer on them. Main thread; native pixels of the global
/// desktop, origin top-left, in the layout that this port makes. Every other port speaks of places
/// in that layout.
class Displays {
public:
    virtual ~Displays() = default;

    /// Connected displays, the primary one first. Empty when there are none.
    [[nodiscard]] virtual std::vector<ScreenInfo> screens() const = 0;

    /// The same without asking every dock what it takes, which is the slow part: each visible frame
    /// is the whole display.
    [[nodiscard]] virtual std::vector<ScreenInfo> layout() const = 0;

    /// Where the pointer is now, or nothing when the system does not tell.
    [[nodiscard]] virtual std::optional<QPoint> pointer() const = 0;

    /// `changed` runs on the main thread after a display was added, removed, resized or rescaled,
    /// as long as `context` lives.
    virtual void whenChanged(QObject* context, std::function<void()> changed) = 0;
};

/// The screen that this place (native pixels of the global desktop) is on, else the primary one;
/// none when there are no screens.
[[nodiscard]] std::optional<ScreenInfo> screenAt(const Displays& displays, QPoint place);

/// The screen with the pointer, else the primary one; none when there are no screens.
[[nodiscard]] std::optional<ScreenInfo> screenUnderPointer(const Displays& displays);

} // namespace brindlecam
