#include "canvas/Selection.h"

#include "base/Geometry.h"
#include "base/Overloaded.h"

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

constexpr qreal kHandleReach = 7; // points from a handle's centre, on each axis
constexpr qreal kLeastSide = 3;   // points; a smaller drag is a click

struct Range {
    qreal from;
    qreal to;
};

// The edge named by `side` follows the pointer, the other stays.
Range resized(int side, qreal pointer, qreal minimum, qreal maximum)
{
    if (side < 0)
        return {pointer, maximum};
    if (side > 0)
        return {minimum, pointer};
    return {minimum, maximum};
}

// Neighbours share an edge, and only one of them holds it; but the canvas's own far edge belongs to
// whatever reaches it.
bool holds(const QRectF& rect, QPointF point, const QRectF& canvas)
{
    const auto before = [](qreal value, qreal end, qreal canvasEnd) {
        return value < end || (value == end && end >= canvasEnd);
    };
    return rect.left() <= point.x() && before(point.x(), rect.right(), canvas.right()) &&
           rect.top() <= point.y() && before(point.y(), rect.bottom(), canvas.bottom());
}

QRectF resized(const drag::Resizing& drag, QPointF point)
{
    const QRectF& original = drag.original;
    const Range x = resized(drag.handle.dx, point.x(), original.left(), original.right());
    const Range y = resized(drag.handle.dy, point.y(), original.top(), original.bottom());
    return spanned({x.from, y.from}, {x.to, y.to});
}

QRectF movedInside(const QRectF& rect, QPointF by, QSizeF canvas)
{
    const qreal mostX = std::max(0.0, canvas.width() - rect.width());
    const qreal mostY = std::max(0.0, canvas.height() - rect.height());
    return {QPointF(std::clamp(rect.x() + by.x(), 0.0, mostX),
                    std::clamp(rect.y() + by.y(), 0.0, mostY)),
            rect.size()};
}

} // namespace

Selection::Selection(QSizeF canvas)
    : m_canvas(canvas)
{
}

void Selection::setWindows(std::vector<QRectF> windows)
{
    m_windows = std::move(windows);
}

QRectF Selection::hole() const
{
    return isEmpty() ? m_hoveredWindow.value_or(QRectF()) : m_rect;
}

QPointF Selection::centre(Handle handle, const QRectF& selection)
{
    const QPointF middle = selection.center();
    return {middle.x() + handle.dx * selection.width() / 2,
            middle.y() + handle.dy * selection.height() / 2};
}

std::optional<Handle> Selection::handleAt(QPointF point) const
{
    if (isEmpty())
        return std::nullopt;
    const auto* found = std::ranges::find_if(kHandles, [&](Handle handle) {
        const QPointF distance = centre(handle, m_rect) - point;
        return std::abs(distance.x()) <= kHandleReach && std::abs(distance.y()) <= kHandleReach;
    });
    return found == kHandles.end() ? std::nullopt : std::optional(*found);
}

void Selection::hover(QPointF point)
{
    if (!isEmpty() || isDragging())
        return;
    point = clamped(point, canvas());
    const auto found = std::ranges::find_if(
        m_windows, [&](const QRectF& window) { return holds(window, point, canvas()); });
    m_hoveredWindow = found == m_windows.end() ? std::nullopt : std::optional(*found);
}

void Selection::leave()
{
    if (!isDragging())
        m_hoveredWindow.reset();
}

Selection::Press Selection::press(QPointF point, Marks marks)
{
    point = clamped(point, canvas());
    if (isEmpty()) {
        hover(point);
        startSelecting(point);
        return Press::selecting;
    }
    if (const auto handle = handleAt(point)) {
        m_drag = drag::Resizing{*handle, m_rect};
        return Press::resizing;
    }
    if (m_rect.contains(point))
        return Press::inside;
    if (marks == Marks::present)
        return Press::ignored;
    startSelecting(point);
    return Press::selecting;
}

void Selection::startSelecting(QPointF point)
{
    m_rect = {};
    m_drag = drag::Selecting{point};
}

void Selection::startMoving(QPointF point)
{
    m_drag = drag::Moving{clamped(point, canvas())};
}

void Selection::startMovingAnnotation(QPointF point)
{
    m_drag = drag::MovingAnnotation{clamped(point, canvas())};
}

void Selection::startDrawing()
{
    m_drag = drag::Drawing{};
}

bool Selection::isChanging() const
{
    return isDragging() && !std::holds_alternative<drag::MovingAnnotation>(m_drag) &&
           !std::holds_alternative<drag::Drawing>(m_drag);
}

std::optional<Selection::AnnotationMove> Selection::moveAnnotationTo(QPointF point)
{
    auto* moving = std::get_if<drag::MovingAnnotation>(&m_drag);
    if (!moving)
        return std::nullopt;
    point = clamped(point, canvas());
    const QPointF last = std::exchange(moving->last, point);
    if (last == point)
        return std::nullopt;
    return AnnotationMove{point - last, !std::exchange(moving->checkpointed, true)};
}

void Selection::moveBy(QPointF by)
{
    // On whole points, as after a drag; the fraction of a point at the far edge is left to that.
    const QSizeF whole(std::floor(m_canvas.width()), std::floor(m_canvas.height()));
    if (!isEmpty())
        m_rect = settled(movedInside(m_rect, by, whole));
}

void Selection::moveFarEdges(QPointF by)
{
    if (isEmpty())
        return;
    const auto moved = [](qreal edge, qreal step, qreal opposite, qreal end) {
        return step == 0 ? edge : std::min(std::max(edge + step, opposite + kLeastSide), end);
    };
    m_rect.setRight(moved(m_rect.right(), by.x(), m_rect.left(), m_canvas.width()));
    m_rect.setBottom(moved(m_rect.bottom(), by.y(), m_rect.top(), m_canvas.height()));
    m_rect = settled(m_rect);
}

void Selection::dragTo(QPointF point)
{
    point = clamped(point, canvas());
    std::visit(
        Overloaded{
            [](drag::None) {},
            [&](const drag::Selecting& selecting) { m_rect = spanned(selecting.anchor, point); },
            [&](drag::Moving& moving) {
                m_rect = movedInside(m_rect, point - moving.last, m_canvas);
                moving.last = point;
            },
            [&](const drag::Resizing& resizing) { m_rect = resized(resizing, point); },
            [](const drag::MovingAnnotation&) {},
            [](drag::Drawing) {},
        },
        m_drag);
}

QRectF Selection::settled(const QRectF& rect) const
{
    return QRectF(roundedOutward(rect)).intersected(canvas());
}

void Selection::release()
{
    const bool changed = isChanging();
    m_drag = drag::None{};
    if (!changed)
        return;
    m_rect = settled(m_rect);
    if (m_rect.width() < kLeastSide || m_rect.height() < kLeastSide)
        m_rect = m_hoveredWindow ? settled(*m_hoveredWindow) : QRectF();
    if (!isEmpty())
        m_hoveredWindow.reset();
}

void Selection::clear()
{
    m_rect = {};
    m_drag = drag::None{};
}

} // namespace brindlecam
