#pragma once

#include "desktop/support/x11/Connection.h"

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QSize>

namespace brindlecam::desktop {

/// A board of one-pixel or larger squares in two colours, for telling scaled from sharp.
[[nodiscard]] QImage checkerboard(QSize pixels, int square, QColor first, QColor second);

/// A picture without two equal neighbours and without repetition: a shift by one pixel shows.
[[nodiscard]] QImage pattern(QSize pixels);

/// The largest difference of any channel of any pixel inside the region; 256 when the sizes differ.
[[nodiscard]] int difference(const QImage& one, const QImage& other, const QRegion& where);
/// Whether two pictures have the same pixels, whatever their formats.
[[nodiscard]] bool samePixels(const QImage& one, const QImage& other);
/// The picture under black at alpha 0.45.
[[nodiscard]] QImage dimmed(const QImage& picture);

/// A pixmap of the root's depth with this picture; the server frees it with the connection.
[[nodiscard]] xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture);
/// Tiles the desktop behind all windows with a picture, also under a compositor, as long as the
/// connection lasts.
void hangWallpaper(const Connection& connection, const QImage& picture);

} // namespace brindlecam::desktop
