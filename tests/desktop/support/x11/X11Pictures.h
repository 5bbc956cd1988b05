#pragma once

#include "desktop/support/x11/Connection.h"

#include <QImage>

namespace brindlecam::desktop {

/// A pixmap of the root's depth with this picture; the server frees it with the connection.
[[nodiscard]] xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture);
/// Tiles the desktop behind all windows with a picture, also under a compositor, as long as the
/// connection lasts.
void hangWallpaper(const Connection& connection, const QImage& picture);

} // namespace brindlecam::desktop
