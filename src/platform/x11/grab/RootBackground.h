#pragma once

#include "platform/x11/connection/RootAccess.h"

#include <QRect>

#include <xcb/xcb.h>

#include <optional>

namespace brindlecam {

/// What the desktop shows where there is no window. On its connection's thread; native pixels.
class RootBackground final {
public:
    /// Children of the root must be redirected. Round trips.
    explicit RootBackground(const x11::RootAccess& access);

    struct Pixels {
        xcb_pixmap_t pixmap;
        QPoint origin; ///< where on the desktop its corner belongs
        bool isTile;   ///< repeated, and somebody else's
    };
    /// What the server itself shows there: where no compositor paints.
    [[nodiscard]] Pixels painted(const QRect& native) const;
    /// What programs tell others to show there, as compositors do; none when they don't.
    [[nodiscard]] std::optional<Pixels> told() const;

    /// Whether it is only we who did this.
    [[nodiscard]] bool isOurDoing(const xcb_generic_event_t& event) const;

private:
    const x11::RootAccess& m_access;
    const xcb_window_t m_window; ///< there only within a call
    xcb_atom_t m_property = XCB_ATOM_NONE;
    std::uint8_t m_depth = 0;
};

} // namespace brindlecam
