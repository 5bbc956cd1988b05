#include "canvas/SizeLabel.h"

#include "look/InterfaceFont.h"
#include "look/Pill.h"

namespace brindlecam::SizeLabel {

namespace {

constexpr qreal kFontSize = 11;
constexpr qreal kGap = 6;
constexpr qreal kTopMargin = 2;

Pill pill(QSize pixels)
{
    return {
        .text = QStringLiteral("%1 × %2").arg(pixels.width()).arg(pixels.height()),
        .font = InterfaceFont::medium(kFontSize),
        .paddingX = 6,
        .paddingY = 3,
        .alpha = 0.85,
        .radius = 4,
        .evenDigits = true,
    };
}

} // namespace

QRectF place(const QRectF& selection, QSizeF label)
{
    const QRectF above(QPointF(selection.left(), selection.top() - kGap - label.height()), label);
    if (above.top() > kTopMargin)
        return above;
    return {selection.topLeft() + QPointF(kGap, kGap), label};
}

QRectF rect(const QRectF& selection, QSize pixels)
{
    return place(selection, pill(pixels).size());
}

void paint(QPainter& painter, const QRectF& selection, QSize pixels)
{
    const Pill label = pill(pixels);
    label.paint(painter, place(selection, label.size()).topLeft());
}

} // namespace brindlecam::SizeLabel
