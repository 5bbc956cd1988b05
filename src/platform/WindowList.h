#pragma once

#include <QRect>

#include <cstdint>
#include <optional>
#include <vector>

namespace brindlecam {

/// One window on the screen.
struct WindowEntry {
    QRect frame;                     ///< what the user sees of it, native pixels, no shadow
    std::optional<int> layer;        ///< 0: ordinary windows and dialogs
    std::optional<std::int64_t> pid; ///< owner
    std::optional<double> opacity;   ///< 0 … 1; absent means opaque

    bool operator==(const WindowEntry&) const = default;
};

/// The windows that are on the screen now. Main thread.
class WindowList {
public:
    virtual ~WindowList() = default;

    /// Visible windows of the current desktop, frontmost first; empty when the system does not
    /// tell.
    [[nodiscard]] virtual std::vector<WindowEntry> frontToBack() const = 0;
};

} // namespace brindlecam
