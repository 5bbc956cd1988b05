#pragma once

#include "platform/x11/connection/RootAccess.h"

#include <QRect>

#include <xcb/randr.h>

#include <optional>
#include <vector>

namespace brindlecam {

/// Where a server's desktop and its screens are; native pixels.
struct DesktopOutline {
    QRect desktop;              ///< empty when the server does not answer
    std::vector<QRect> screens; ///< none: the desktop is one

    /// Whether the rectangle is wholly on the desktop, and at least a part of it on a screen.
    [[nodiscard]] bool shows(const QRect& native) const;
};

/// Asks a server for its outline. On its connection's thread; both halves belong together.
class OutlineQuestion final {
public:
    OutlineQuestion(const x11::RootAccess& access, bool knowsMonitors);
    [[nodiscard]] DesktopOutline answer() const;

    /// Whether the server can tell its monitors (RandR 1.5). Round trips.
    [[nodiscard]] static bool canTellMonitors(const x11::RootAccess& access);

private:
    const x11::RootAccess& m_access;
    const xcb_get_geometry_cookie_t m_desktop;
    std::optional<xcb_randr_get_monitors_cookie_t> m_monitors;
};

} // namespace brindlecam
