#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <optional>

namespace brindlecam {

/// A picture made small enough to be shown somewhere, and how large it really is. Any thread; as
/// slow as decoding.
struct Thumbnail {
    QImage image; ///< premultiplied, never larger than the picture
    QSize pixels; ///< of the whole picture

    /// The largest size with the picture's shape that fits into `most`, at least one pixel each way
    /// and never larger than the picture.
    [[nodiscard]] static QSize fitted(QSize picture, QSize most);

    /// None for no picture, or when memory runs out.
    [[nodiscard]] static std::optional<Thumbnail> of(const QImage& picture, QSize most);

    /// Of a PNG file, of which a row at a time is held, or of any other that Qt reads, which holds
    /// it whole: an interlaced one, or an animation, of which it is the first frame. None where
    /// there is no whole picture.
    [[nodiscard]] static std::optional<Thumbnail> ofFile(const QString& path, QSize most);
};

} // namespace brindlecam
