#include "DrawnMark.h"

#include <QPainter>

namespace brindlecam::test {

Annotation textMark(QPointF topLeft, const QString& words, const QColor& color)
{
    Annotation mark(Tool::text, color, topLeft);
    mark.setText(words, Annotation::textLineHeight() + 2);
    return mark;
}

Annotation markBetween(Tool tool, QPointF start, QPointF end, const QColor& color, qreal width)
{
    Annotation mark(tool, color, start);
    mark.setLineWidth(width);
    if (tool == Tool::pen || tool == Tool::marker)
        mark.append(end);
    else
        mark.setEnd(end);
    return mark;
}

Annotation badgeMark(QPointF centre, qreal diameter, int number, const QColor& color)
{
    Annotation badge(Tool::number, color, centre);
    badge.setLineWidth(diameter);
    badge.setNumber(number);
    return badge;
}

QImage drawnMark(const Annotation& mark, QSize points, qreal scale)
{
    QImage picture((QSizeF(points) * scale).toSize(), QImage::Format_RGB32);
    picture.fill(kPaper);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    mark.draw(painter);
    return picture;
}

QRect inkedRect(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != kPaper)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

bool hasPixel(const QImage& picture, QRgb color)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) == color)
                return true;
        }
    }
    return false;
}

} // namespace brindlecam::test
