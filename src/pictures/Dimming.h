#pragma once

#include <QImage>

namespace brindlecam {

/// The dimming of what lies outside the selection: black at alpha 0.45 over every pixel.
namespace Dimming {

/// Writes the dimmed rows [firstRow, firstRow + rows) of `bright` into the same rows of `dimmed`.
/// Both are 32-bit pictures of one size; the alpha byte becomes opaque. Bands of rows may be dimmed
/// on several threads at once.
void dimRows(const QImage& bright, uchar* dimmed, qsizetype dimmedBytesPerLine, int firstRow,
             int rows);

/// A dimmed copy of a 32-bit picture.
[[nodiscard]] QImage dimmedCopy(const QImage& bright);

} // namespace Dimming

} // namespace brindlecam
