#pragma once

#include "desktop/support/x11/Connection.h"

#include <QRect>

#include <optional>

namespace brindlecam::test {

/// A window manager that does each step only when it is told to, so that a program meets what a
/// busy one shows it by chance. For one window; where no other window manager runs.
class ManagerByHand final {
public:
    ManagerByHand();

    /// Whether windows ask it; false where another one was first.
    [[nodiscard]] bool manages() const { return m_manages; }
    /// Carries out what was asked about places and sizes since. A map waits for frame().
    void placeAsAsked();
    /// Whether a window waits to be mapped; serves nothing by itself.
    [[nodiscard]] bool isAskedToMap() const { return m_window.has_value(); }
    /// Takes that window into a frame there, of its own idea, and maps both.
    void frame(const QRect& rect);

private:
    void configure(const xcb_configure_request_event_t& request);

    desktop::Connection m_connection;
    bool m_manages = false;
    std::optional<xcb_window_t> m_window;
    std::optional<xcb_window_t> m_frame;
};

} // namespace brindlecam::test
