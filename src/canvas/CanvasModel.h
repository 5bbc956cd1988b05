#pragma once

#include "canvas/AnnotationEditor.h"
#include "canvas/Selection.h"
#include "pictures/Rendered.h"

#include <QImage>
#include <QPoint>
#include <QRect>

#include <functional>
#include <optional>
#include <vector>

namespace brindlecam {

/// One frozen screen with the selection and the marks on it, as the pointer and the keys change
/// them. Knows no window and no event. Points of the canvas, origin top-left, y down.
class CanvasModel final {
public:
    /// `frozen` is in pixels, `size` the same in points, `nativeOrigin` its place on the desktop in
    /// native pixels.
    CanvasModel(const QImage& frozen, QSizeF size, QPoint nativeOrigin);

    [[nodiscard]] Selection& selection() { return m_selection; }
    [[nodiscard]] const Selection& selection() const { return m_selection; }
    [[nodiscard]] AnnotationEditor& editor() { return m_editor; }
    [[nodiscard]] const AnnotationEditor& editor() const { return m_editor; }

    /// What a press asks of whoever shows the canvas.
    enum class Press {
        selecting, ///< a new selection has begun: no other screen keeps one
        text,      ///< a text is to be typed here
        handled,
    };
    /// `stroke` is that of the mark which the press may begin.
    Press press(QPointF point, const AnnotationEditor::Stroke& stroke);
    /// The pointer has moved, with or without a drag. Answers what must be painted anew around the
    /// mark being drawn.
    std::vector<QRectF> moveTo(QPointF point, AnnotationEditor::Constraint constraint);

    enum class Picture { same, changed };
    struct Release {
        std::vector<QRectF> stale; ///< what the mark that was drawn covers
        Picture picture = Picture::same;
    };
    /// Ends the drag.
    Release release();

    /// Moves the selected mark, else the selection, or the selection's far edges.
    void moveByKey(QPointF by);
    void moveFarEdges(QPointF by);

    /// Drops everything: another screen has begun a selection.
    void clear();

    /// The selection as it would be if the drag ended here.
    [[nodiscard]] QRectF settledSelection() const;
    /// The same in native pixels of the desktop.
    [[nodiscard]] QRect nativeSelection() const;

    /// The selected part of the frozen screen as it was, in its own pixels; null when nothing is
    /// selected.
    [[nodiscard]] QImage frozenSelection() const;

    /// The selected part of the frozen screen with its marks, in its own pixels; none when nothing
    /// is selected. The same picture again as long as nothing has changed.
    [[nodiscard]] std::optional<Rendered> render();

private:
    /// The last picture and what it was made of.
    struct Shown {
        Rendered picture;
        QRectF rect;
        AnnotationList::Marks marks;
    };

    [[nodiscard]] std::function<QImage()> flattening(const QRectF& rect, const QRect& pixels) const;
    [[nodiscard]] QPointF reach(QPointF point) const;
    void pressedInside(QPointF point, const AnnotationEditor::Stroke& stroke);

    const QImage m_frozen;
    const QSizeF m_size;
    const QPoint m_nativeOrigin;
    Selection m_selection;
    AnnotationEditor m_editor;
    std::optional<Shown> m_shown;
    std::optional<Shown> m_below; ///< an earlier one that is flattened
};

} // namespace brindlecam
