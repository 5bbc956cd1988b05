#pragma once

#include "desktop/support/x11/Connection.h"

#include <QImage>

#include <cstdint>

namespace brindlecam::desktop {

/// A pixmap of the root's depth with this picture; the server frees it with the connection.
[[nodiscard]] xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture);
/// One of this depth; 32 is with an alpha channel.
[[nodiscard]] xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture,
                                    std::uint8_t depth);
/// Tiles the desktop behind all windows with a picture, also under a compositor, as long as the
/// connection lasts.
void hangWallpaper(const Connection& connection, const QImage& picture);

} // namespace brindlecam::desktop
