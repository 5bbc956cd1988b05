#include "GlyphPainter.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace brindlecam::test {

namespace {

constexpr int kVocabulary = 800;
constexpr qreal kXHeight = 0.74;
constexpr qreal kStroke = 0.13;
constexpr qreal kGap = 0.14;
constexpr qreal kSpace = 0.42;
constexpr qreal kBowl = 0.68; ///< width of a round letter

} // namespace

GlyphPainter::GlyphPainter(quint32 seed)
    : m_alphabet(alphabet())
    , m_state(seed * 2 + 1)
{
    const int letters = static_cast<int>(m_alphabet.size());
    for (int i = 0; i < kVocabulary; ++i) {
        Word word;
        const int length = i < kVocabulary / 20 ? 1 + next(3) : 3 + next(8);
        // The smaller of two: some letters are frequent, as in every language.
        for (int j = 0; j < length; ++j)
            word.push_back(static_cast<std::size_t>(std::min(next(letters), next(letters))));
        m_vocabulary.push_back(word);
    }
}

int GlyphPainter::next(int limit)
{
    m_state = m_state * 1664525U + 1013904223U;
    return static_cast<int>((m_state >> 8) % static_cast<quint32>(limit));
}

qreal GlyphPainter::drawLine(QPainter& painter, QPointF baseline, qreal width, qreal height,
                             const QColor& color)
{
    const qreal end = baseline.x() + width;
    qreal x = baseline.x();
    while (x + 3 * height < end)
        x = drawWord(painter, {x, baseline.y()}, height, color) + kSpace * height;
    return x;
}

qreal GlyphPainter::drawWord(QPainter& painter, QPointF baseline, qreal height, const QColor& color)
{
    QPen pen(color, kStroke);
    pen.setCapStyle(Qt::FlatCap);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    const qreal rank = std::pow(next(1 << 16) / 65536.0, 3);
    qreal x = baseline.x();
    for (const std::size_t letter : m_vocabulary[static_cast<std::size_t>(rank * kVocabulary)]) {
        const Glyph& glyph = m_alphabet[letter];
        painter.save();
        // Quarters of a unit, as text renderers place their glyphs.
        painter.translate(std::round(x * 4) / 4, baseline.y());
        painter.scale(height, height);
        painter.drawPath(glyph.strokes);
        painter.restore();
        x += (glyph.advance + kGap) * height;
    }
    painter.restore();
    return x;
}

std::vector<GlyphPainter::Glyph> GlyphPainter::alphabet()
{
    const qreal half = kStroke / 2;
    const QRectF bowl(half, -kXHeight + half, kBowl - kStroke, kXHeight - kStroke);
    const auto stem = [](QPainterPath& path, qreal x, qreal top, qreal bottom) {
        path.moveTo(x, top);
        path.lineTo(x, bottom);
    };
    const auto letter = [](qreal advance, const auto& draw) {
        Glyph glyph;
        glyph.advance = advance;
        draw(glyph.strokes);
        return glyph;
    };
    const auto arch = [half](QPainterPath& path, qreal left, qreal width) {
        path.moveTo(left, -kXHeight / 2);
        path.cubicTo(left, -kXHeight + half, left + width, -kXHeight + half, left + width,
                     -kXHeight / 2);
        path.lineTo(left + width, 0);
    };

    return {
        letter(kBowl,
               [&](QPainterPath& p) { // e
                   p.arcMoveTo(bowl, 320);
                   p.arcTo(bowl, 320, -320);
                   p.moveTo(bowl.left(), bowl.center().y());
                   p.lineTo(bowl.right(), bowl.center().y());
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // a
                   p.addEllipse(bowl.adjusted(0, bowl.height() * 0.4, 0, 0));
                   stem(p, bowl.right(), -kXHeight + 0.1, 0);
                   p.moveTo(bowl.left() + 0.05, -kXHeight + half);
                   p.lineTo(bowl.right(), -kXHeight + half);
               }),
        letter(kBowl, [&](QPainterPath& p) { p.addEllipse(bowl); }), // o
        letter(kStroke * 1.5,
               [&](QPainterPath& p) { // i
                   stem(p, half, -kXHeight, 0);
                   stem(p, half, -1, -0.85);
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // n
                   stem(p, half, -kXHeight, 0);
                   arch(p, half, kBowl - kStroke);
               }),
        letter(kBowl - 0.08,
               [&](QPainterPath& p) { // s
                   p.moveTo(bowl.right() - 0.05, -kXHeight + half);
                   p.cubicTo(-0.2, -kXHeight, 0.6, -kXHeight / 2, bowl.right() - 0.05, -half * 2);
                   p.lineTo(bowl.left(), -half);
               }),
        letter(0.26,
               [&](QPainterPath& p) { // r
                   stem(p, half, -kXHeight, 0);
                   p.moveTo(half, -kXHeight / 2);
                   p.quadTo(half, -kXHeight + half, 0.26, -kXHeight + half);
               }),
        letter(0.28,
               [&](QPainterPath& p) { // t
                   stem(p, 0.13, -0.9, -half);
                   p.lineTo(0.28, -half);
                   p.moveTo(0, -kXHeight + half);
                   p.lineTo(0.28, -kXHeight + half);
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // d
                   p.addEllipse(bowl);
                   stem(p, bowl.right(), -1, 0);
               }),
        letter(kStroke * 1.5, [&](QPainterPath& p) { stem(p, half, -1, 0); }), // l
        letter(kBowl,
               [&](QPainterPath& p) { // c
                   p.arcMoveTo(bowl, 50);
                   p.arcTo(bowl, 50, 260);
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // u
                   p.moveTo(half, -kXHeight);
                   p.lineTo(half, -kXHeight / 2);
                   p.cubicTo(half, -half, kBowl - half, -half, kBowl - half, -kXHeight / 2);
                   stem(p, kBowl - half, -kXHeight, 0);
               }),
        letter(kBowl + 0.34,
               [&](QPainterPath& p) { // m
                   stem(p, half, -kXHeight, 0);
                   arch(p, half, 0.42);
                   arch(p, half + 0.42, 0.42);
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // p
                   p.addEllipse(bowl);
                   stem(p, half, -kXHeight, 0.3);
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // b
                   p.addEllipse(bowl);
                   stem(p, half, -1, 0);
               }),
        letter(kBowl,
               [&](QPainterPath& p) { // v
                   p.moveTo(0.03, -kXHeight);
                   p.lineTo(kBowl / 2, -half);
                   p.lineTo(kBowl - 0.03, -kXHeight);
               }),
        letter(0.6,
               [&](QPainterPath& p) { // A
                   p.moveTo(0.03, 0);
                   p.lineTo(0.3, -1 + half);
                   p.lineTo(0.57, 0);
                   p.moveTo(0.14, -0.35);
                   p.lineTo(0.46, -0.35);
               }),
        letter(0.5,
               [&](QPainterPath& p) { // E
                   p.moveTo(0.5, -1 + half);
                   p.lineTo(half, -1 + half);
                   p.lineTo(half, -half);
                   p.lineTo(0.5, -half);
                   p.moveTo(half, -0.5);
                   p.lineTo(0.44, -0.5);
               }),
        letter(0.5,
               [&](QPainterPath& p) { // 0
                   p.addEllipse(QRectF(half, -1 + half, 0.37, 1 - kStroke));
               }),
        letter(0.3,
               [&](QPainterPath& p) { // 1
                   p.moveTo(0, -0.8);
                   p.lineTo(0.2, -1 + half);
                   p.lineTo(0.2, 0);
               }),
    };
}

} // namespace brindlecam::test
