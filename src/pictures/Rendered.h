#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>

#include <functional>
#include <memory>

namespace brindlecam {

/// A finished picture on its way out: flattened pixels, and the size in points they stood for on
/// the screen, from which the density of every file is taken. Copies share one picture. Safe from
/// several threads.
class Rendered final {
public:
    /// No picture.
    Rendered() = default;
    Rendered(const QImage& image, QSizeF pointSize);
    /// A picture of so many pixels that is flattened when somebody first asks for it: marks are
    /// drawn where the picture is encoded and not where the pointer is followed. `flatten` runs
    /// once, on any thread; a null image is a picture that could not be made.
    Rendered(QSize pixels, QSizeF pointSize, std::function<QImage()> flatten);

    /// The pixels, shared and not copied. May be slow at first, then at once.
    [[nodiscard]] QImage image() const;
    /// Whether image() answers at once.
    [[nodiscard]] bool isFlattened() const;
    [[nodiscard]] QSizeF pointSize() const { return m_pointSize; }

    /// Whether both are the same picture, which means the same bytes in every file.
    [[nodiscard]] bool isSame(const Rendered& other) const;

    /// Dots per metre of a file of this picture: 2835 at 1 pixel per point, 5669 at 2.
    [[nodiscard]] int dotsPerMetre() const;

    /// TIFF with LZW compression and this picture's density; empty when it can't be encoded. Slow:
    /// call it off the main thread.
    [[nodiscard]] QByteArray tiffData() const;

private:
    struct Flattening;

    QSize m_pixels;
    QSizeF m_pointSize;
    std::shared_ptr<Flattening> m_flattening;
};

} // namespace brindlecam
