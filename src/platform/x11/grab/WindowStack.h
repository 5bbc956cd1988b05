#pragma once

#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/connection/X11Windows.h"

#include <QRect>
#include <QRegion>

#include <xcb/xcb.h>

#include <vector>

namespace brindlecam {

/// A child of the root window that is to be seen; native pixels of the global desktop.
struct StackedWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    xcb_visualid_t visual = 0;
    QRect rect;           ///< with its border
    int border = 0;       ///< how much of that, on each side
    QRegion shape;        ///< what of it draws
    bool isPanel = false; ///< ours, and no window manager's
};

/// The windows on the root as they lie above each other. On its connection's thread.
class WindowStack final {
public:
    /// Panels are made by the client with these numbers. Round trips.
    WindowStack(const x11::RootAccess& access, const x11::ClientIds& ours);

    /// Those that touch the rectangle now, the lowest first. From then on the server tells of
    /// changes of their shape. Round trips; nobody else may change anything meanwhile.
    [[nodiscard]] std::vector<StackedWindow> touching(const QRect& native) const;

    /// Whether this tells that it may be another stack by now.
    [[nodiscard]] bool isChange(const xcb_generic_event_t& event) const;

private:
    void findShapes(std::vector<StackedWindow>& windows) const;

    const x11::RootAccess& m_access;
    const x11::ClientIds m_ours;
    int m_shapeNotify = -1; ///< the event's kind; negative: no window has a shape
};

} // namespace brindlecam
