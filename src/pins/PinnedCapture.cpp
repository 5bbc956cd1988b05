#include "pins/PinnedCapture.h"

#include "base/Text.h"
#include "pins/PinGeometry.h"
#include "pins/PinnedView.h"
#include "platform/Displays.h"
#include "platform/Panels.h"
#include "platform/Pins.h"

#include <QCloseEvent>

#include <cmath>

namespace brindlecam {

namespace {

constexpr int kDragDistance = 3; // points

} // namespace

PinnedCapture::PinnedCapture(const Rendered& rendered, const PinPorts& ports)
    : m_rendered(rendered)
    , m_ports(ports)
    , m_view(new PinnedView(rendered.image(), *this))
{
    setWindowTitle(text("Captura fijada"));
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setFocusProxy(m_view);
    m_surface = m_ports.pins.make(*this, kCornerRadius, [this] { fitView(); });
}

PinnedCapture::~PinnedCapture() = default;

void PinnedCapture::open(const QRect& native)
{
    m_frame = native;
    m_screen = PinGeometry::screenOf(m_frame, m_ports.displays.screens());
    m_surface->show({native, scale()});
    fitView();
}

// Its place and size.

void PinnedCapture::noticeForeignMoves()
{
    const QRect actual = m_surface->rect();
    if (!actual.isEmpty() && actual != PinGeometry::onPixels(m_frame))
        m_frame = actual;
}

void PinnedCapture::moveTo(const QRectF& frame)
{
    const QRect pixels = PinGeometry::onPixels(frame);
    m_frame = frame;
    m_surface->place({pixels, scale()});
    if (pixels.size() == m_surface->pixels())
        fitView();
}

void PinnedCapture::zoomBy(qreal factor)
{
    noticeForeignMoves();
    const QRectF zoomed = PinGeometry::zoomed(m_frame, m_rendered.pointSize() * scale(), factor);
    moveTo(PinGeometry::reachable(zoomed, m_ports.displays.layout()));
    if (!m_drag)
        return;
    // The hand goes on with what it has now.
    m_drag->frame = m_frame;
    if (m_drag->moves)
        m_drag->from = m_drag->last;
}

void PinnedCapture::grip(QPointF place)
{
    noticeForeignMoves();
    m_surface->grip();
    const QPoint from = onDesktop(place);
    m_drag = Drag{.from = from, .last = from, .frame = m_frame};
}

void PinnedCapture::follow(const QMouseEvent& event)
{
    if (!m_drag)
        return;
    const QPoint pointer = m_surface->hand(event);
    m_drag->last = pointer;
    const QPoint way = pointer - m_drag->from;
    m_drag->moves = m_drag->moves || way.manhattanLength() >= kDragDistance * scale();
    if (!m_drag->moves)
        return;
    // The screen under the pointer decides: the pin's own centre would move with its size.
    const QRectF underPointer(pointer, QSizeF());
    const auto screen = PinGeometry::screenOf(underPointer, m_ports.displays.layout());
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
    if (!m_drag)
        return;
    m_drag.reset();
    m_surface->letGo();
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
    const auto screens = m_ports.displays.screens();
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

QPoint PinnedCapture::onDesktop(QPointF place) const
{
    return m_surface->onDesktop(place);
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
    fitView();
    repaint(); // Qt would let the old size be seen for some milliseconds
}

void PinnedCapture::fitView()
{
    m_view->setPixels(m_surface->pixels(), scale());
    m_view->setCorners(m_surface->blends() ? PinnedView::Corners::blended
                                           : PinnedView::Corners::cut);
}

// What becomes of it.

void PinnedCapture::openMenu(QPoint place)
{
    letGo();
    // Not through text(), on purpose: these three read the same whatever catalogue is installed.
    m_ports.panels.popUp(*m_view, place,
                         {{QStringLiteral("Copiar"), [this] { copyImage(); }},
                          {QStringLiteral("Guardar…"), [this] { saveImage(); }},
                          {QStringLiteral("Cerrar"), [this] { dismiss(); }}});
}

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
