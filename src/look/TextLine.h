#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

class QPainter;

namespace brindlecam {

/// One line of text painted by hand at its real size. Two things Qt's own text lacks: a fractional
/// font size is kept (Qt rounds what it loads to whole pixels, in 6.4 as in 6.11), and digits can
/// all take the width of the widest one, so that a counting text does not jump (Qt can ask a font
/// for its tabular figures since 6.7: QFont::setFeature). Points. Any thread for fonts of a whole
/// size, the main thread for others.
struct TextLine {
    QString text;
    QFont font;
    bool evenDigits = false;

    [[nodiscard]] qreal width() const;
    [[nodiscard]] qreal ascent() const;
    /// Ascent and descent.
    [[nodiscard]] qreal height() const;
    /// The same line, its tail cut off and replaced by an ellipsis where it is wider than this.
    [[nodiscard]] TextLine elided(qreal room) const;

    /// Draws with the painter's pen, from this point of the baseline.
    void draw(QPainter& painter, QPointF baseline) const;
};

} // namespace brindlecam
