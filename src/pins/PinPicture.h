#pragma once

#include <QImage>

#include <vector>

class QPainter;

namespace brindlecam {

/// A pin's picture at any size: pixel for pixel at its own, smooth at others. Smaller ones come
/// from halves of it, each made when it is first needed, so that no pixel is left out and nothing
/// shimmers. Main thread.
class PinPicture final {
public:
    explicit PinPicture(const QImage& image);

    /// Fills a rectangle of device pixels; the painter counts in those.
    void paint(QPainter& painter, const QRect& target) const;

private:
    [[nodiscard]] const QImage& sourceFor(int width) const;

    mutable std::vector<QImage> m_levels; ///< each half as large as the one before
};

} // namespace brindlecam
