#pragma once

#include <QByteArray>
#include <QImage>

namespace brindlecam::bench {

/// The yardstick of the encoders: libpng as other programs use it, level 6 with adaptive filters,
/// 24 bits per pixel.
[[nodiscard]] QByteArray encodedByLibPng(const QImage& image);

struct LibPngRun {
    double milliseconds = 0; ///< encoding and writing to a file
    qsizetype bytes = 0;
};

[[nodiscard]] LibPngRun encodeAndWriteByLibPng(const QImage& image);

} // namespace brindlecam::bench
