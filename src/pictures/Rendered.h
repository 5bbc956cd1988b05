#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>

namespace brindlecam {

/// A finished picture on its way out: flattened pixels, and the size in points they stood for on
/// the screen, from which the density of every file is taken. The image is shared, not copied.
struct Rendered {
    QImage image;
    QSizeF pointSize;

    /// Dots per metre of a file of this picture: 2835 at 1 pixel per point, 5669 at 2.
    [[nodiscard]] int dotsPerMetre() const;

    /// TIFF with LZW compression and this picture's density; empty when it can't be encoded. Slow:
    /// call it off the main thread.
    [[nodiscard]] QByteArray tiffData() const;
};

} // namespace brindlecam
