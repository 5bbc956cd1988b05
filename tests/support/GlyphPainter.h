#pragma once

#include <QColor>
#include <QPainterPath>
#include <QPointF>

#include <vector>

class QPainter;

namespace brindlecam::test {

/// Writes lines of made-up words with letters of our own, so that text in test pictures looks the
/// same on every machine. Strokes, stems and bowls are antialiased like those of a real font.
class GlyphPainter final {
public:
    explicit GlyphPainter(quint32 seed);

    /// One line of words of at most `width`, its x-height standing on `baseline`. Lengths are in
    /// the painter's units; `height` is the height of a capital. Returns where the line ended.
    qreal drawLine(QPainter& painter, QPointF baseline, qreal width, qreal height,
                   const QColor& color);
    /// A single word.
    qreal drawWord(QPainter& painter, QPointF baseline, qreal height, const QColor& color);

    /// The next number of a fixed sequence, below `limit`.
    [[nodiscard]] int next(int limit);

private:
    struct Glyph {
        QPainterPath strokes; ///< in capital heights, y down, baseline at 0
        qreal advance = 0;
    };

    using Word = std::vector<std::size_t>; ///< indices of its letters

    static std::vector<Glyph> alphabet();

    std::vector<Glyph> m_alphabet;
    std::vector<Word> m_vocabulary; ///< frequent words first
    quint32 m_state;
};

} // namespace brindlecam::test
