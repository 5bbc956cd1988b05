#include "canvas/AnnotationEditor.h"

#include "base/Geometry.h"
#include "pictures/Pixelation.h"
#include "preferences/Config.h"

#include <cmath>
#include <numbers>

namespace brindlecam {

namespace {

// On the nearest eighth of a turn around `start`, as far away as `point` is.
QPointF onEighthTurn(QPointF start, QPointF point)
{
    constexpr qreal kEighth = std::numbers::pi / 4;
    const QPointF reach = point - start;
    const qreal length = std::hypot(reach.x(), reach.y());
    const qreal angle = std::round(std::atan2(reach.y(), reach.x()) / kEighth) * kEighth;
    return start + length * QPointF(std::cos(angle), std::sin(angle));
}

bool isStroke(Tool tool)
{
    return tool == Tool::pen || tool == Tool::marker;
}

} // namespace

AnnotationEditor::AnnotationEditor(QImage frozen, QSizeF canvas)
    : m_frozen(std::move(frozen))
    , m_canvas(canvas)
    , m_color(Config::palette.front())
{
}

AnnotationList::Mark AnnotationEditor::annotationAt(QPointF point) const
{
    return m_list.topmostAt(point);
}

void AnnotationEditor::chooseTool(Tool tool)
{
    m_tool = tool;
    deselect();
}

void AnnotationEditor::beginAnnotation(Tool tool, QPointF point, const Stroke& stroke)
{
    endRun();
    m_current.emplace(tool, m_color, point);
    m_current->setOpacity(stroke.opacity);
    m_current->setLineWidth(stroke.lineWidth);
    if (tool == Tool::number)
        m_current->setNumber(nextNumber(m_color));
}

std::vector<QRectF> AnnotationEditor::drawTo(QPointF point, const QRectF& selection,
                                             Constraint constraint)
{
    if (!m_current)
        return {};
    point = clamped(point, selection);
    Annotation& mark = *m_current;
    if (isStroke(mark.tool())) {
        // Only the new piece: a long stroke would otherwise be painted whole at every move.
        const qreal reach = mark.lineWidth() / 2 + 2;
        const QRectF piece = spanned(mark.points().last(), point);
        mark.append(point);
        return {piece.adjusted(-reach, -reach, reach, reach)};
    }
    std::vector<QRectF> stale = mark.paintedParts();
    if (mark.tool() == Tool::number) {
        mark.moveTo(point);
    } else {
        const bool constrains = constraint == Constraint::eighthTurns &&
                                (mark.tool() == Tool::line || mark.tool() == Tool::arrow);
        if (constrains)
            point = clamped(onEighthTurn(mark.points().first(), point), selection);
        mark.setEnd(point);
        pixelate(mark);
    }
    const std::vector<QRectF> now = mark.paintedParts();
    stale.insert(stale.end(), now.begin(), now.end());
    return stale;
}

std::vector<QRectF> AnnotationEditor::endDrawing()
{
    if (!m_current)
        return {};
    const Annotation finished = *std::exchange(m_current, std::nullopt);
    if (!finished.isNegligible())
        m_list.append(finished);
    return finished.paintedParts();
}

void AnnotationEditor::addText(const QString& text, const QColor& color, const QRectF& field)
{
    endRun();
    Annotation mark(Tool::text, color, field.topLeft());
    mark.setText(text, field.height());
    if (!mark.isNegligible())
        m_list.append(mark);
}

bool AnnotationEditor::selectAt(QPointF point)
{
    endRun();
    m_selected = m_list.topmostAt(point);
    return m_selected != nullptr;
}

void AnnotationEditor::deselect()
{
    endRun();
    m_selected.reset();
}

void AnnotationEditor::moveSelected(QPointF by, Step step)
{
    if (!m_selected)
        return;
    endRun();
    if (step == Step::wanted)
        m_list.checkpoint();
    Annotation moved = *m_selected;
    moved.translate(by);
    pixelate(moved);
    m_selected = m_list.replace(m_selected, std::move(moved));
}

void AnnotationEditor::nudgeSelected(QPointF by)
{
    if (!m_selected)
        return;
    moveSelected(by, m_nudged == m_selected ? Step::noted : Step::wanted);
    m_nudged = m_selected;
}

bool AnnotationEditor::deleteSelected()
{
    endRun();
    return m_list.remove(std::exchange(m_selected, nullptr));
}

bool AnnotationEditor::hasMarksOrSteps() const
{
    return !m_list.isEmpty() || m_list.canUndo() || m_list.canRedo();
}

bool AnnotationEditor::undo()
{
    if (!m_list.undo())
        return false;
    deselect();
    return true;
}

bool AnnotationEditor::redo()
{
    if (!m_list.redo())
        return false;
    deselect();
    return true;
}

void AnnotationEditor::clear()
{
    m_list.clear();
    m_current.reset();
    deselect();
}

void AnnotationEditor::pixelate(Annotation& annotation) const
{
    if (annotation.tool() != Tool::pixelate)
        return;
    const QSize pixels = m_frozen.size();
    annotation.setPixelated(
        Pixelation::of(m_frozen, pixelRect(annotation.rect(), m_canvas, pixels),
                       Pixelation::cellPixels(pixelsPerPoint(m_canvas, pixels))));
}

} // namespace brindlecam
