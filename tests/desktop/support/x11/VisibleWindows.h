#pragma once

#include "desktop/support/x11/Connection.h"

#include <QRect>
#include <QString>

#include <vector>

namespace brindlecam::desktop {

/// A window that lies directly on the root: an unmanaged one, or a window manager's frame.
struct VisibleWindow {
    xcb_window_t id = 0;
    QRect pixels; ///< of the whole screen
    QString title;
    quint32 pid = 0; ///< whose it claims to be; 0 when it does not tell
};

/// Every window of the root that is shown now, the lowest first.
[[nodiscard]] std::vector<VisibleWindow> visibleWindows(const Connection& connection);

/// The window that has the keyboard focus, 0 for none and 1 for whatever the pointer is on.
[[nodiscard]] xcb_window_t focusedWindow(const Connection& connection);

} // namespace brindlecam::desktop
