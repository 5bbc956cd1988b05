#include "app/Pill.h"

#include "app/Config.h"
#include "app/TextLine.h"

#include <QPainter>

#include <cmath>

namespace brindlecam {

namespace {

TextLine lineOf(const Pill& pill)
{
    return {.text = pill.text, .font = pill.font, .evenDigits = pill.evenDigits};
}

} // namespace

QSizeF Pill::size() const
{
    const TextLine line = lineOf(*this);
    return {std::ceil(line.width()) + 2 * paddingX, std::ceil(line.height()) + 2 * paddingY};
}

qreal Pill::cornerRadius() const
{
    return radius < 0 ? size().height() / 2 : radius;
}

void Pill::paint(QPainter& painter, QPointF topLeft) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Config::panelColor(alpha));
    painter.drawRoundedRect(QRectF(topLeft, size()), cornerRadius(), cornerRadius());

    const TextLine line = lineOf(*this);
    painter.setPen(Qt::white);
    line.draw(painter, topLeft + QPointF(paddingX, paddingY + line.ascent()));
    painter.restore();
}

} // namespace brindlecam
