#pragma once

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QSize>
#include <QStringList>

namespace brindlecam::desktop {

/// A board of one-pixel or larger squares in two colours, for telling scaled from sharp.
[[nodiscard]] QImage checkerboard(QSize pixels, int square, QColor first, QColor second);

/// A picture without two equal neighbours and without repetition: a shift by one pixel shows.
[[nodiscard]] QImage pattern(QSize pixels);
/// What such a picture shows in one place.
[[nodiscard]] QRgb patternAt(QPoint pixel);
/// Every pixel's colour tells its place among 32 × 32, and which of these it is in; the channels
/// keep their high bits for depth 16.
[[nodiscard]] QImage coarsePattern(QSize pixels);
/// Cannot be packed: takes an encoder its time, and its PNG is larger than any small disk. The same
/// each time.
[[nodiscard]] QImage noise(QSize pixels);

/// The largest difference of any channel of any pixel inside the region; 256 when the sizes differ.
[[nodiscard]] int difference(const QImage& one, const QImage& other, const QRegion& where);
/// Whether two pictures have the same pixels, whatever their formats.
[[nodiscard]] bool samePixels(const QImage& one, const QImage& other);
/// The picture under black at alpha 0.45.
[[nodiscard]] QImage dimmed(const QImage& picture);

/// Full paths of the pictures in a folder, sorted by name. What is still being written is none.
[[nodiscard]] QStringList picturesIn(const QString& folder);

} // namespace brindlecam::desktop
