#pragma once

#include "canvas/AnnotationList.h"
#include "canvas/MarkedPicture.h"

#include <QImage>
#include <QRegion>
#include <QSize>

namespace brindlecam::test {

/// Size in points of the screens that marks are tried on.
inline constexpr QSize kMarkedPoints(320, 240);

/// A screen of that size, with so many pixels per point, whose every pixel differs from the next.
QImage frozenScreen(qreal scale);

/// A screen that showed the frozen picture and is repainted where it was told to.
class MarkedScreen final {
public:
    explicit MarkedScreen(const QImage& frozen);

    void repaint(MarkedPicture& picture, const QRegion& exposed);

    /// Repaints what the marks change, and answers whether all of it looks right then.
    bool follows(MarkedPicture& picture, const AnnotationList& list);

    [[nodiscard]] const QImage& shown() const { return m_screen; }

private:
    QImage m_frozen;
    QImage m_screen;
};

} // namespace brindlecam::test
