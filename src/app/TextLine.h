#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

class QPainter;

namespace brindlecam {

/// One line of text painted by hand at its real size. Two things Qt's own text lacks: a fractional
/// font size is kept (Qt rounds what it loads to whole pixels), and digits can all take the width
/// of the widest one, so that a counting text does not jump (before 6.7 Qt can't ask a font for its
/// tabular figures). Points.
struct TextLine {
    QString text;
    QFont font;
    bool evenDigits = false;

    [[nodiscard]] qreal width() const;
    [[nodiscard]] qreal ascent() const;
    /// Ascent and descent.
    [[nodiscard]] qreal height() const;

    /// Draws with the painter's pen, from this point of the baseline.
    void draw(QPainter& painter, QPointF baseline) const;
};

} // namespace brindlecam
