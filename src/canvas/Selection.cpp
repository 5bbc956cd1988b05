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

// The edge named by `side` follows the pointer, as far as to the least length if there is one; the
// other stays.
Range resized(int side, qreal pointer, Range original, std::optional<qreal> least)
{
    const auto [minimum, maximum] = original;
    if (side < 0)
        return {least ? std::min(pointer, maximum - *least) : pointer, maximum};
    if (side > 0)
        return {minimum, least ? std::max(pointer, minimum + *least) : pointer};
    return original;
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
    const auto least = [&](qreal (QSizeF::*side)() const) {
        return drag.least ? std::optional(((*drag.least).*side)()) : std::nullopt;
    };
    const Range x = resized(drag.handle.dx, point.x(), {original.left(), original.right()},
                            least(&QSizeF::width));
    const Range y = resized(drag.handle.dy, point.y(), {original.top(), original.bottom()},
                            least(&QSizeF::height));
    return spanned({x.from, y.from}, {x.to, y.to});
}

// An edge of the original that has not moved, else the other place.
qreal unmoved(qreal edge, Range original, qreal otherwise)
{
    constexpr qreal kSame = 1e-6; // a rectangle keeps its far edges as sums
    for (const qreal known : {original.from, original.to}) {
        if (std::abs(edge - known) < kSame)
            return known;
    }
    return otherwise;
}

// On whole points, as after a drag; the fraction of a point at the far edge is left to that. What
// lies there already stays.
qreal movedInside(qreal origin, qreal by, qreal length, qreal end)
{
    const qreal most = std::max({0.0, std::floor(end) - length, origin});
    return std::clamp(origin + by, 0.0, most);
}

// From one place to another in whole pixels, as far as something in between has room.
int pixelsInside(qreal from, qreal to, int begin, int length, int end)
{
    const int way = static_cast<int>(std::round(to) - std::round(from));
    return std::clamp(way, std::min(0, -begin), std::max(0, end - begin - length));
}

} // namespace

Selection::Selection(QSizeF canvas, PixelsPerPoint ratio)
    : m_canvas(canvas)
    , m_ratio(ratio)
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

Selection::Press Selection::press(QPointF point, Drawn drawn)
{
    point = clamped(point, canvas());
    m_pointer = point;
    if (isEmpty()) {
        hover(point);
        startSelecting(point);
        return Press::selecting;
    }
    if (const auto handle = handleAt(point)) {
        m_drag = drag::Resizing{*handle, m_rect, std::nullopt};
        if (drawn == Drawn::something)
            std::get<drag::Resizing>(m_drag).least =
                QSizeF(kLeastSide, kLeastSide).boundedTo(m_rect.size());
        return Press::resizing;
    }
    if (m_rect.contains(point))
        return Press::inside;
    if (drawn == Drawn::something)
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
    if (isEmpty())
        return;
    m_rect.moveTo(movedInside(m_rect.x(), by.x(), m_rect.width(), m_canvas.width()),
                  movedInside(m_rect.y(), by.y(), m_rect.height(), m_canvas.height()));
}

void Selection::moveFarEdges(QPointF by)
{
    if (isEmpty())
        return;
    const auto moved = [](qreal edge, qreal step, qreal opposite, qreal end) {
        return step == 0 ? edge : std::min(std::max(edge + step, opposite + kLeastSide), end);
    };
    const QRectF before = m_rect;
    m_rect.setRight(moved(m_rect.right(), by.x(), m_rect.left(), m_canvas.width()));
    m_rect.setBottom(moved(m_rect.bottom(), by.y(), m_rect.top(), m_canvas.height()));
    m_rect = onWholePoints({.handle = {1, 1}, .original = before, .least = {}});
}

/// How far the selection may move with a pointer that goes from here to there: whole pixels, so
/// that it covers as many of them as before.
QPointF Selection::wayInside(QPointF from, QPointF to) const
{
    const auto inPixels = [this](const QRectF& points) {
        return roundedOutward({points.x() * m_ratio.x, points.y() * m_ratio.y,
                               points.width() * m_ratio.x, points.height() * m_ratio.y});
    };
    const QRect pixels = inPixels(m_rect);
    const QSize screen = inPixels(canvas()).size();
    return {pixelsInside(from.x() * m_ratio.x, to.x() * m_ratio.x, pixels.x(), pixels.width(),
                         screen.width()) /
                m_ratio.x,
            pixelsInside(from.y() * m_ratio.y, to.y() * m_ratio.y, pixels.y(), pixels.height(),
                         screen.height()) /
                m_ratio.y};
}

void Selection::dragTo(QPointF point)
{
    point = clamped(point, canvas());
    m_pointer = point;
    std::visit(
        Overloaded{
            [](drag::None) {},
            [&](const drag::Selecting& selecting) { m_rect = spanned(selecting.anchor, point); },
            [&](drag::Moving& moving) {
                m_rect.translate(wayInside(moving.last, point));
                moving.last = point;
            },
            [&](const drag::Resizing& resizing) { m_rect = resized(resizing, point); },
            [](const drag::MovingAnnotation&) {},
            [](drag::Drawing) {},
        },
        m_drag);
}

QRectF Selection::onWholePoints(const QRectF& rect) const
{
    return QRectF(roundedOutward(rect)).intersected(canvas());
}

// An edge that stays may lie between two points: a window's does.
QRectF Selection::onWholePoints(const drag::Resizing& drag) const
{
    if (m_rect == drag.original)
        return drag.original;
    const QRectF whole = onWholePoints(m_rect);
    const Range x{drag.original.left(), drag.original.right()};
    const Range y{drag.original.top(), drag.original.bottom()};
    return {QPointF(unmoved(m_rect.left(), x, whole.left()), unmoved(m_rect.top(), y, whole.top())),
            QPointF(unmoved(m_rect.right(), x, whole.right()),
                    unmoved(m_rect.bottom(), y, whole.bottom()))};
}

QRectF Selection::settled() const
{
    return std::visit(
        Overloaded{
            [this](const drag::Selecting&) { return onWholePoints(m_rect); },
            [this](const drag::Resizing& resizing) { return onWholePoints(resizing); },
            [this](const auto&) { return m_rect; },
        },
        m_drag);
}

void Selection::release()
{
    if (!isDragging())
        return;
    m_rect = settled();
    const Drag ended = std::exchange(m_drag, drag::None{});
    const auto* resizing = std::get_if<drag::Resizing>(&ended);
    const bool mayBeAClick = std::holds_alternative<drag::Selecting>(ended) ||
                             (resizing && !resizing->least && m_rect != resizing->original);
    if (mayBeAClick && (m_rect.width() < kLeastSide || m_rect.height() < kLeastSide))
        m_rect = m_hoveredWindow ? m_hoveredWindow->intersected(canvas()) : QRectF();
    m_hoveredWindow.reset();
    hover(m_pointer);
}

void Selection::clear()
{
    m_rect = {};
    m_drag = drag::None{};
}

} // namespace brindlecam
