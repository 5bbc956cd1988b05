#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QSize>
#include <QSizeF>

namespace brindlecam {

class Annotation;

/// Draws marks on a part of a picture that is painted as a picture of its own, with the very pixels
/// that they have in the whole. Pixels of the whole, origin top-left. On any thread.
class MarkedPart final {
public:
    /// `target` shows the part `part` of a picture of the size `picture`; `canvas` is that size in
    /// points. The target outlives this and is painted by nobody else meanwhile.
    MarkedPart(QImage& target, QSizeF canvas, QSize picture, const QRect& part);

    /// Nothing where the mark does not touch the part.
    void draw(const Annotation& mark);

private:
    void countInPoints(QPainter& painter, QPoint topLeft) const;
    void drawApart(const Annotation& mark, const QRect& area);

    QImage& m_target;
    QSizeF m_canvas;
    QSize m_picture;
    QRect m_part;
    QPainter m_painter;
};

} // namespace brindlecam
