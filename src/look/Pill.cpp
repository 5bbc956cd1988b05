#include "look/Pill.h"

#include "look/DevicePixels.h"
#include "look/TextLine.h"
#include "preferences/Config.h"

#include <QPainter>

#include <algorithm>
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
    QPointF origin = topLeft;
    {
        // Its edges on whole pixels, and the text moved along.
        const DevicePixels pixels(painter);
        const QRect ground = pixels.nearest(QRectF(topLeft, size()));
        const qreal round = std::min(pixels.length(cornerRadius()), ground.height() / 2.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Config::panelColor(alpha));
        painter.drawRoundedRect(ground, round, round);
        origin = pixels.corner(ground.topLeft());
    }
    const TextLine line = lineOf(*this);
    painter.setPen(Qt::white);
    line.draw(painter, origin + QPointF(paddingX, paddingY + line.ascent()));
    painter.restore();
}

} // namespace brindlecam
