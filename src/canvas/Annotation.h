#pragma once

#include "base/Tool.h"
#include "pictures/Pixelation.h"

#include <QColor>
#include <QFont>
#include <QPolygonF>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace brindlecam {

/// One mark on the frozen screen: its geometry, what it hits and how it is drawn. A value: a copy
/// is independent of its original, though what is large is shared until changed. Points of the
/// canvas, origin top-left, y down. Finished marks are shared as constants, also between threads.
class Annotation final {
public:
    /// A mark just begun at this place: pen, marker, number and text have one point, the others
    /// two equal ones (start and end).
    Annotation(Tool tool, const QColor& color, QPointF start);

    [[nodiscard]] Tool tool() const { return m_tool; }
    /// Stroke, fill or text colour.
    [[nodiscard]] const QColor& color() const { return m_color; }
    /// Never empty.
    [[nodiscard]] const QPolygonF& points() const { return m_points; }
    [[nodiscard]] const QString& text() const { return m_text; }
    /// Height of the box of a text; its upper left corner is the first point.
    [[nodiscard]] qreal textHeight() const { return m_textHeight; }
    /// Alpha of a marker.
    [[nodiscard]] qreal opacity() const { return m_opacity; }
    /// Width of the stroke, or the diameter of a step badge.
    [[nodiscard]] qreal lineWidth() const { return m_lineWidth; }
    /// The step a badge shows.
    [[nodiscard]] int number() const { return m_number; }
    /// What a pixelating mark shows; without it the screen shows as it is.
    [[nodiscard]] const std::optional<Pixelation>& pixelated() const { return m_pixelated; }

    /// Lengthens a pen or marker stroke.
    void append(QPointF point);
    /// Moves the end of a line, arrow, rectangle or pixelation.
    void setEnd(QPointF point);
    /// Moves a badge or a text: its first point comes to lie here.
    void moveTo(QPointF point);
    /// Moves every point. What is pixelated stays: the canvas pixelates anew.
    void translate(QPointF by);
    void setText(const QString& text, qreal boxHeight);
    void setOpacity(qreal opacity) { m_opacity = opacity; }
    void setLineWidth(qreal width) { m_lineWidth = width; }
    void setNumber(int number) { m_number = number; }
    void setPixelated(std::optional<Pixelation> pixelated) { m_pixelated = std::move(pixelated); }

    /// Spanned by the first and the last point.
    [[nodiscard]] QRectF rect() const;
    /// The area the mark takes, for its outline when selected.
    [[nodiscard]] QRectF bounds() const;
    /// All that draw() may touch, for repainting.
    [[nodiscard]] QRectF paintedBounds() const;
    /// The same as rectangles that leave out most of what a long line passes by. They may overlap.
    [[nodiscard]] std::vector<QRectF> paintedParts() const;
    /// Whether it is not worth keeping once the mouse is up: no text, or shorter than 3 points.
    [[nodiscard]] bool isNegligible() const;
    [[nodiscard]] bool hitTest(QPointF point) const;

    /// Draws with a painter that counts in points of the canvas and is neither rotated nor sheared;
    /// its state is kept. On any thread.
    void draw(QPainter& painter) const;

    /// The font of every text mark; of the calling thread.
    [[nodiscard]] static const QFont& textFont();
    /// Ascent and descent of that font, rounded up to whole points.
    [[nodiscard]] static qreal textLineHeight();

private:
    [[nodiscard]] bool polylineHit(QPointF point, qreal tolerance) const;

    Tool m_tool;
    QColor m_color;
    QPolygonF m_points;
    QRectF m_box; ///< around all points; empty for a single one
    QString m_text;
    QSizeF m_measured; ///< of the text
    qreal m_textHeight = 0;
    qreal m_opacity = 0.4;
    qreal m_lineWidth = 3;
    int m_number = 0;
    std::optional<Pixelation> m_pixelated;
};

} // namespace brindlecam
