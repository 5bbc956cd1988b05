#pragma once

#include "canvas/Annotation.h"
#include "canvas/AnnotationList.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <vector>

namespace brindlecam {

/// The marks on one canvas while they are worked on: the chosen tool and colour, the mark being
/// drawn, the selected one, and every change with its step back. Knows no window and no event.
/// Points of the canvas, origin top-left, y down.
class AnnotationEditor final {
public:
    /// How a new mark is drawn: stroke width (or badge diameter) in points, and the marker's alpha.
    struct Stroke {
        qreal lineWidth = 3;
        qreal opacity = 0.4;
    };
    /// What holds the end of a line or an arrow.
    enum class Constraint { none, eighthTurns };

    /// `frozen` is what pixelated marks are made of, in pixels; `canvas` its size in points.
    AnnotationEditor(QImage frozen, QSizeF canvas);

    [[nodiscard]] const AnnotationList::Marks& annotations() const { return m_list.marks(); }
    /// The mark being drawn; not among the others yet.
    [[nodiscard]] const std::optional<Annotation>& current() const { return m_current; }
    /// The mark picked in pointer mode, or null.
    [[nodiscard]] const AnnotationList::Mark& selectedAnnotation() const { return m_selected; }
    /// The topmost mark under a place, or null.
    [[nodiscard]] AnnotationList::Mark annotationAt(QPointF point) const;

    /// None: pointer mode.
    [[nodiscard]] const std::optional<Tool>& tool() const { return m_tool; }
    void chooseTool(Tool tool);
    void choosePointer() { m_tool.reset(); }
    [[nodiscard]] const QColor& color() const { return m_color; }
    /// Of the marks to come; those that are there keep theirs.
    void setColor(const QColor& color) { m_color = color; }

    /// The number of the next badge of a colour: one more than the highest on the canvas.
    [[nodiscard]] int nextNumber(const QColor& color) const { return m_list.nextNumber(color); }

    /// Begins a mark of any tool but text.
    void beginAnnotation(Tool tool, QPointF point, const Stroke& stroke);
    /// The pointer has dragged the current mark on. Both place and constrained end stay inside
    /// `selection`. Answers what must be painted anew.
    std::vector<QRectF> drawTo(QPointF point, const QRectF& selection, Constraint constraint);
    /// Keeps the current mark unless it is negligible. Answers what must be painted anew.
    std::vector<QRectF> endDrawing();
    /// A typed text becomes a mark; an empty one does not.
    void addText(const QString& text, const QColor& color, const QRectF& field);

    /// Selects the topmost mark under a place; none there: false, and nothing is selected.
    bool selectAt(QPointF point);
    void deselect();

    enum class Step { noted, wanted };
    /// Moves the selected mark; where the step back is wanted, it is noted first.
    void moveSelected(QPointF by, Step step);
    /// Moves the selected mark by a key: a run of such moves is one step back.
    void nudgeSelected(QPointF by);
    /// Whether there was one to delete.
    bool deleteSelected();

    /// Whether there are marks, or steps that bring some back.
    [[nodiscard]] bool hasMarksOrSteps() const;
    /// Whether anything changed.
    bool undo();
    bool redo();
    /// Drops all marks and every step.
    void clear();

private:
    void pixelate(Annotation& annotation) const;
    void endRun() { m_nudged.reset(); }

    const QImage m_frozen;
    const QSizeF m_canvas;
    AnnotationList m_list;
    std::optional<Tool> m_tool;
    QColor m_color;
    std::optional<Annotation> m_current;
    AnnotationList::Mark m_selected;
    AnnotationList::Mark m_nudged; ///< the mark of the present run of key presses
};

} // namespace brindlecam
