#pragma once

#include "base/Result.h"
#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/grab/RootFormat.h"

#include <QImage>
#include <QRect>

namespace brindlecam::ConnectionPixels {

/// The way of pixels where memory can't be shared: in the answer itself. Both halves on the
/// connection's thread; what was requested must be received once. Native pixels, of the root window
/// or of a pixmap of its depth.
[[nodiscard]] xcb_get_image_cookie_t request(const x11::RootAccess& access, xcb_drawable_t source,
                                             const QRect& rect);
/// In the layout of the root window, in memory of the answer's.
[[nodiscard]] Result<QImage> receive(const x11::RootAccess& access, const RootFormat& format,
                                     QSize size, xcb_get_image_cookie_t cookie);

} // namespace brindlecam::ConnectionPixels
