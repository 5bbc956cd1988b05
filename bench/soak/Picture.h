#pragma once

#include <QImage>
#include <QRegion>

namespace brindlecam::soak {

/// What a picture must look like, and where that is certain: frames of windows, for one, are
/// repainted whenever the window manager likes.
struct Picture {
    QImage pixels;
    QRegion certain;

    /// A picture that is certain everywhere.
    [[nodiscard]] static Picture exactly(const QImage& image) { return {image, image.rect()}; }
    [[nodiscard]] Picture part(const QRect& where) const;
    /// Whether another picture has this size, and these pixels where they are certain.
    [[nodiscard]] bool isShownBy(const QImage& image) const;
    /// Whether another picture, of whatever size, looks alike from afar. The edges do not count.
    [[nodiscard]] bool resembles(const QImage& image) const;
};

} // namespace brindlecam::soak
