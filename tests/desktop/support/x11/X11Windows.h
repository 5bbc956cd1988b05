#pragma once

#include "desktop/support/Windows.h"
#include "desktop/support/x11/Connection.h"

#include <optional>

namespace brindlecam::desktop {

/// The server's tree of windows, and what their properties tell.
class X11Windows final : public Windows {
public:
    explicit X11Windows(const QString& display);

    using Windows::shown;
    [[nodiscard]] std::vector<SeenWindow> shown(qint64 pid) const override;
    [[nodiscard]] std::vector<SeenWindow> all() const override;
    [[nodiscard]] bool exists(qint64 pid, const QRect& pixels) const override;
    [[nodiscard]] WindowId focused() const override;
    [[nodiscard]] bool hasKeyboard(qint64 pid) const override;
    [[nodiscard]] WindowId active() const override;

private:
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t parent) const;
    void collect(xcb_window_t parent, qint64 pid, std::vector<SeenWindow>& found) const;
    /// None when it is not shown.
    [[nodiscard]] std::optional<SeenWindow> seen(xcb_window_t window) const;
    [[nodiscard]] qint64 pid(xcb_window_t window) const;

    Connection m_connection;
};

} // namespace brindlecam::desktop
