#include "look/TextLine.h"

#include "look/InterfaceFont.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>

namespace brindlecam {

namespace {

/// A font of a whole size, and by how much to scale what it draws.
struct ScaledFont {
    QFont font;
    qreal scale = 1;
};

ScaledFont scaledFont(const QFont& font)
{
    const qreal points = InterfaceFont::points(font);
    const int whole = std::max(1, static_cast<int>(std::ceil(points)));
    ScaledFont scaled{font, points / whole};
    scaled.font.setPixelSize(whole);
    return scaled;
}

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

qreal digitWidth(const QFontMetricsF& metrics)
{
    qreal widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    return widest;
}

using Place = std::function<void(qreal x, const QString& piece)>;

/// Hands out the pieces with their place from the left edge; answers the width of them all.
qreal layOut(const TextLine& line, const QFontMetricsF& metrics, const Place& place)
{
    const QString& text = line.text;
    if (!line.evenDigits) {
        place(0, text);
        return metrics.horizontalAdvance(text);
    }
    const qreal cell = digitWidth(metrics);
    qreal x = 0;
    for (qsizetype i = 0; i < text.size();) {
        qsizetype end = i + 1;
        if (!isDigit(text.at(i))) {
            while (end < text.size() && !isDigit(text.at(end)))
                ++end;
        }
        const QString piece = text.mid(i, end - i);
        const qreal advance = metrics.horizontalAdvance(piece);
        const qreal room = isDigit(text.at(i)) ? cell : advance;
        place(x + (room - advance) / 2, piece);
        x += room;
        i = end;
    }
    return x;
}

} // namespace

qreal TextLine::width() const
{
    const ScaledFont scaled = scaledFont(font);
    return layOut(*this, QFontMetricsF(scaled.font), [](qreal, const QString&) {}) * scaled.scale;
}

qreal TextLine::ascent() const
{
    const ScaledFont scaled = scaledFont(font);
    return QFontMetricsF(scaled.font).ascent() * scaled.scale;
}

qreal TextLine::height() const
{
    const ScaledFont scaled = scaledFont(font);
    const QFontMetricsF metrics(scaled.font);
    return (metrics.ascent() + metrics.descent()) * scaled.scale;
}

TextLine TextLine::elided(qreal room) const
{
    TextLine line = *this;
    QString rest = text;
    while (!rest.isEmpty() && line.width() > room) {
        rest.chop(rest.back().isLowSurrogate() ? 2 : 1);
        while (rest.endsWith(QLatin1Char(' ')))
            rest.chop(1);
        line.text = rest + QChar(0x2026);
    }
    return line;
}

void TextLine::draw(QPainter& painter, QPointF baseline) const
{
    const ScaledFont scaled = scaledFont(font);
    painter.save();
    painter.translate(baseline);
    painter.scale(scaled.scale, scaled.scale);
    painter.setFont(scaled.font);
    layOut(*this, QFontMetricsF(scaled.font),
           [&painter](qreal x, const QString& piece) { painter.drawText(QPointF(x, 0), piece); });
    painter.restore();
}

} // namespace brindlecam
