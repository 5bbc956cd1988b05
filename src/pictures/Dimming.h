#pragma once

#include <QImage>
#include <QRect>

namespace brindlecam {

/// The dimming of what lies outside the selection: black at alpha 0.45 over every pixel.
namespace Dimming {

/// Writes a part of a 32-bit picture, dimmed, to where the part's first pixel goes. The part lies
/// in the picture; the alpha byte becomes opaque. Any thread.
void dim(const QImage& bright, const QRect& part, uchar* dimmed, qsizetype dimmedBytesPerLine);

/// A dimmed copy of a 32-bit picture, or of a part that lies in it.
[[nodiscard]] QImage dimmedCopy(const QImage& bright);
[[nodiscard]] QImage dimmedCopy(const QImage& bright, const QRect& part);

} // namespace Dimming

} // namespace brindlecam
