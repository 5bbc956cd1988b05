#include "look/Pill.h"

#include "look/DevicePixels.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "look/TextWrapping.h"
#include "preferences/Config.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kBetweenLines = 2;
constexpr qreal kWidestToolTip = 320; // of its text

std::vector<TextLine> linesOf(const Pill& pill)
{
    std::vector<TextLine> lines;
    for (const QString& text : pill.text.split(QLatin1Char('\n')))
        lines.push_back({.text = text, .font = pill.font, .evenDigits = pill.evenDigits});
    return lines;
}

} // namespace

Pill Pill::toolTip(const QString& text)
{
    const QFont font = InterfaceFont::medium(12);
    return {.text = wrapped(text, font, kWidestToolTip),
            .font = font,
            .paddingX = 10,
            .paddingY = 5,
            .alpha = 0.92,
            .radius = 7};
}

QSizeF Pill::size() const
{
    qreal width = 0;
    qreal height = -kBetweenLines;
    for (const TextLine& line : linesOf(*this)) {
        width = std::max(width, std::ceil(line.width()));
        height += std::ceil(line.height()) + kBetweenLines;
    }
    return {width + 2 * paddingX, height + 2 * paddingY};
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
    painter.setPen(Qt::white);
    QPointF place = origin + QPointF(paddingX, paddingY);
    for (const TextLine& line : linesOf(*this)) {
        line.draw(painter, place + QPointF(0, line.ascent()));
        place.ry() += std::ceil(line.height()) + kBetweenLines;
    }
    painter.restore();
}

} // namespace brindlecam
