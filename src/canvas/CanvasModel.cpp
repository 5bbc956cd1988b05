#include "canvas/CanvasModel.h"

#include "base/Geometry.h"
#include "canvas/MarkedPicture.h"
#include "pictures/Crop.h"

#include <algorithm>
#include <utility>

namespace brindlecam {

CanvasModel::CanvasModel(const QImage& frozen, QSizeF size, QPoint nativeOrigin)
    : m_frozen(frozen)
    , m_size(size)
    , m_nativeOrigin(nativeOrigin)
    , m_selection(size, pixelsPerPoint(size, frozen.size()))
    , m_editor(frozen, size)
{
}

// A pointer names whole pixels, so the last one would leave the picture's last line out of reach.
// Half a pixel more, because a third of a point is no exact number.
QPointF CanvasModel::reach(QPointF point) const
{
    constexpr qreal kLastPixel = 1.5;
    const PixelsPerPoint ratio = pixelsPerPoint(m_size, m_frozen.size());
    return {point.x() > m_size.width() - kLastPixel / ratio.x ? m_size.width() : point.x(),
            point.y() > m_size.height() - kLastPixel / ratio.y ? m_size.height() : point.y()};
}

CanvasModel::Press CanvasModel::press(QPointF point, const AnnotationEditor::Stroke& stroke)
{
    const auto marks =
        m_editor.annotations().empty() ? Selection::Drawn::nothing : Selection::Drawn::something;
    switch (m_selection.press(reach(point), marks)) {
    case Selection::Press::selecting:
        m_editor.deselect();
        return Press::selecting;
    case Selection::Press::inside:
        if (m_editor.tool() == Tool::text)
            return Press::text;
        pressedInside(point, stroke);
        return Press::handled;
    case Selection::Press::resizing:
    case Selection::Press::ignored:
        return Press::handled;
    }
    return Press::handled;
}

void CanvasModel::pressedInside(QPointF point, const AnnotationEditor::Stroke& stroke)
{
    if (m_editor.tool()) {
        m_editor.beginAnnotation(*m_editor.tool(), clamped(point, m_selection.rect()), stroke);
        m_selection.startDrawing();
    } else if (m_editor.selectAt(point)) {
        m_selection.startMovingAnnotation(point);
    } else {
        m_selection.startMoving(point);
    }
}

std::vector<QRectF> CanvasModel::moveTo(QPointF point, AnnotationEditor::Constraint constraint)
{
    if (m_editor.current())
        return m_editor.drawTo(reach(point), m_selection.rect(), constraint);
    if (const auto moved = m_selection.moveAnnotationTo(point)) {
        using Step = AnnotationEditor::Step;
        m_editor.moveSelected(moved->by, moved->first ? Step::wanted : Step::noted);
    } else if (std::holds_alternative<drag::Moving>(m_selection.drag())) {
        m_selection.dragTo(point);
    } else if (m_selection.isDragging()) {
        m_selection.dragTo(reach(point));
    } else {
        m_selection.hover(point);
    }
    return {};
}

CanvasModel::Release CanvasModel::release()
{
    const auto* moving = std::get_if<drag::MovingAnnotation>(&m_selection.drag());
    const bool onlyPressed = moving && !moving->checkpointed;
    std::vector<QRectF> stale = m_editor.endDrawing();
    m_selection.release();
    return {std::move(stale), onlyPressed ? Picture::same : Picture::changed};
}

void CanvasModel::moveByKey(QPointF by)
{
    if (m_editor.selectedAnnotation())
        m_editor.nudgeSelected(by);
    else
        m_selection.moveBy(by);
}

void CanvasModel::moveFarEdges(QPointF by)
{
    m_selection.moveFarEdges(by);
}

void CanvasModel::clear()
{
    m_editor.clear();
    m_selection.clear();
    m_shown.reset();
    m_below.reset();
}

QRectF CanvasModel::settledSelection() const
{
    return m_selection.settled();
}

QRect CanvasModel::nativeSelection() const
{
    return pixelRect(settledSelection(), m_size, m_frozen.size())
        .intersected(m_frozen.rect())
        .translated(m_nativeOrigin);
}

QImage CanvasModel::frozenSelection() const
{
    return croppedView(m_frozen, pixelRect(settledSelection(), m_size, m_frozen.size()));
}

// Marks mostly come one by one: those that an earlier picture has are not drawn again.
std::function<QImage()> CanvasModel::flattening(const QRectF& rect, const QRect& pixels) const
{
    const AnnotationList::Marks& marks = m_editor.annotations();
    if (m_below && m_below->rect == rect && m_below->marks.size() <= marks.size() &&
        std::equal(m_below->marks.begin(), m_below->marks.end(), marks.begin())) {
        const auto added = marks.begin() + static_cast<std::ptrdiff_t>(m_below->marks.size());
        return [below = m_below->picture, size = m_size, picture = m_frozen.size(), pixels,
                added = AnnotationList::Marks(added, marks.end())] {
            return flattenedOver(below.image(), size, picture, pixels, added);
        };
    }
    return [frozen = m_frozen, size = m_size, pixels, marks] {
        return flattened(frozen, size, pixels, marks);
    };
}

std::optional<Rendered> CanvasModel::render()
{
    const QRectF rect = settledSelection();
    const QRect pixels = pixelRect(rect, m_size, m_frozen.size()).intersected(m_frozen.rect());
    if (rect.width() < 1 || rect.height() < 1 || pixels.isEmpty())
        return std::nullopt;
    const AnnotationList::Marks& marks = m_editor.annotations();
    if (!m_shown || m_shown->rect != rect || m_shown->marks != marks) {
        if (m_shown && m_shown->picture.isFlattened())
            m_below = std::exchange(m_shown, std::nullopt);
        m_shown =
            Shown{Rendered(pixels.size(), rect.size(), flattening(rect, pixels)), rect, marks};
    }
    return m_shown->picture;
}

} // namespace brindlecam
