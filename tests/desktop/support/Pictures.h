#pragma once

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

} // namespace brindlecam::desktop
