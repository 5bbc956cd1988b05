#pragma once

#include <QByteArray>
#include <QImage>

namespace brindlecam {

/// TIFF with LZW compression. Safe from any thread.
namespace TiffWriter {

/// The picture as TIFF bytes with this density; empty for a null image or when the image plugin is
/// missing.
[[nodiscard]] QByteArray encode(const QImage& image, int dotsPerMetre);

} // namespace TiffWriter

} // namespace brindlecam
