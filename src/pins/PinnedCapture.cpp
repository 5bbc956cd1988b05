#include "pins/PinnedCapture.h"

#include "base/Text.h"
#include "pins/PinGeometry.h"
#include "pins/PinnedView.h"
#include "platform/Displays.h"
#include "platform/Panels.h"

#include <QCloseEvent>

#include <cmath>

namespace brindlecam {

namespace {

constexpr int kDragDistance = 3; // points

} // namespace

PinnedCapture::PinnedCapture(const Rendered& rendered, Panels& panels, Displays& displays)
    : m_rendered(rendered)
    , m_panels(panels)
    , m_displays(displays)
    , m_view(new PinnedView(rendered.image(), *this))
{
    setWindowTitle(text("Captura fijada"));
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setFocusProxy(m_view);
    m_panels.assume(*this, PanelRole::pin);
}

void PinnedCapture::open(const QRect& native)
{
    m_frame = native;
    m_screen = PinGeometry::screenOf(m_frame, m_displays.screens());
    m_panels.show(*this, native);
    shapeItself();
}

// Its place and size.

void PinnedCapture::noticeForeignMoves()
{
    const QRect actual = m_panels.nativeRect(*this);
    if (!actual.isEmpty() && actual != PinGeometry::onPixels(m_frame))
        m_frame = actual;
}

void PinnedCapture::moveTo(const QRectF& frame)
{
    const QRect pixels = PinGeometry::onPixels(frame);
    // The shape grows first: else the middle of a window that has grown by several steps lies
    // outside of it, and the pointer on something else.
    cut(pixels.size().expandedTo(shownPixels()));
    m_frame = frame;
    m_moved = true;
    m_panels.place(*this, pixels);
    if (pixels.size() == shownPixels())
        shapeItself();
}

void PinnedCapture::zoomBy(qreal factor)
{
    noticeForeignMoves();
    const QRectF zoomed = PinGeometry::zoomed(m_frame, m_rendered.pointSize() * scale(), factor);
    moveTo(PinGeometry::reachable(zoomed, m_displays.layout()));
    if (!m_drag)
        return;
    // The hand goes on with what it has now.
    m_drag->frame = m_frame;
    if (m_drag->moves)
        m_drag->from = m_drag->last;
}

/// The pixel that was rounded to this one, as long as the pointer is still there.
QPoint PinnedCapture::exact(QPoint pointer) const
{
    const auto now = m_displays.pointer();
    if (!now)
        return pointer;
    const QPoint off = *now - pointer;
    return std::abs(off.x()) <= scale() && std::abs(off.y()) <= scale() ? *now : pointer;
}

void PinnedCapture::grip(QPointF place)
{
    noticeForeignMoves();
    if (!isActiveWindow())
        m_panels.focus(*this);
    const QPoint from =
        PinGeometry::onPixels(m_frame).topLeft() + (place * devicePixelRatioF()).toPoint();
    m_drag = Drag{.from = from, .last = from, .frame = m_frame};
}

void PinnedCapture::follow(QPoint rounded)
{
    if (!m_drag)
        return;
    const QPoint pointer = exact(rounded);
    m_drag->last = pointer;
    const QPoint way = pointer - m_drag->from;
    m_drag->moves = m_drag->moves || way.manhattanLength() >= kDragDistance * scale();
    if (!m_drag->moves)
        return;
    // The screen under the pointer decides: the pin's own centre would move with its size.
    const QRectF underPointer(pointer, QSizeF());
    const auto screen = PinGeometry::screenOf(underPointer, m_displays.layout());
    m_frame = m_drag->frame.translated(way);
    if (screen && screen->scale != scale()) {
        adaptTo(screen, pointer);
        m_drag = Drag{.from = pointer, .last = pointer, .frame = m_frame, .moves = true};
    }
    m_screen = screen;
    moveTo(m_frame);
}

void PinnedCapture::letGo()
{
    m_drag.reset();
}

/// The same size in points there as on the screen before.
void PinnedCapture::adaptTo(const std::optional<ScreenInfo>& screen, QPointF fixed)
{
    if (screen)
        m_frame = PinGeometry::scaled(m_frame, fixed, screen->scale / scale());
    m_screen = screen;
}

void PinnedCapture::stayReachable()
{
    noticeForeignMoves();
    const auto screens = m_displays.screens();
    if (screens.empty())
        return;
    letGo();
    const QRectF before = m_frame;
    adaptTo(PinGeometry::screenOf(m_frame, screens), m_frame.center());
    m_frame = PinGeometry::reachable(m_frame, screens);
    m_screen = PinGeometry::screenOf(m_frame, screens);
    if (m_frame != before)
        moveTo(m_frame);
}

void PinnedCapture::roundCorners()
{
    shapeItself();
}

// A window that grows is ahead of what the widget has heard of, and Qt finds no child for a pointer
// out there: it looks within the widget's own size, not the window's.
bool PinnedCapture::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
        return static_cast<QObject*>(m_view)->event(event);
    default:
        return QWidget::event(event);
    }
}

void PinnedCapture::resizeEvent(QResizeEvent*)
{
    m_view->setGeometry(rect());
    shapeItself();
    repaint(); // Qt would let the old size be seen for some milliseconds
}

/// What was asked for, exactly, once the widget has about that size: it counts in points. Until
/// then, and when the window manager has other ideas, what the widget has.
QSize PinnedCapture::shownPixels() const
{
    const QSize asked = PinGeometry::onPixels(m_frame).size();
    const qreal ratio = devicePixelRatioF();
    const QSize shown = (QSizeF(size()) * ratio).toSize();
    const QSize off = shown - asked;
    const bool same = std::abs(off.width()) <= ratio && std::abs(off.height()) <= ratio;
    return same ? asked : shown;
}

void PinnedCapture::shapeItself()
{
    const QSize pixels = shownPixels();
    m_view->setPixels(pixels, scale());
    m_view->setCorners(m_panels.translucent(*this) ? PinnedView::Corners::blended
                                                   : PinnedView::Corners::cut);
    if (!m_moved || pixels == PinGeometry::onPixels(m_frame).size())
        return cut(pixels);
    // The widget hears of its sizes late. What the window has grown to meanwhile is not cut off:
    // the pointer on it would be on something else.
    cut(pixels.expandedTo(m_panels.nativeRect(*this).size()));
}

void PinnedCapture::cut(QSize pixels)
{
    const QSize wanted = m_panels.translucent(*this) ? QSize() : pixels;
    if (m_cut == wanted)
        return;
    m_cut = wanted;
    m_panels.setShape(*this, PinGeometry::rounded(wanted, kCornerRadius * scale()));
}

// What becomes of it.

void PinnedCapture::copyImage()
{
    if (onCopy)
        onCopy();
}

void PinnedCapture::saveImage()
{
    if (onSave)
        onSave();
}

void PinnedCapture::dismiss()
{
    letGo();
    hide();
    if (onDismiss)
        onDismiss();
}

void PinnedCapture::hideEvent(QHideEvent*)
{
    letGo(); // its window may be made anew, and the release went to the old one
}

void PinnedCapture::closeEvent(QCloseEvent* event)
{
    event->accept();
    dismiss();
}

} // namespace brindlecam
