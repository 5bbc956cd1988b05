#include "platform/x11/windows/X11Pin.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/windows/CompositorWatch.h"
#include "platform/x11/windows/PanelWindows.h"
#include "platform/x11/windows/QtOnX11.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

#include <cstdlib>
#include <utility>

namespace brindlecam {

namespace {

/// Where the event happened, rounded to Qt's points.
QPoint roundedPlace(const QMouseEvent& event)
{
    const QPointF place = event.globalPosition();
    const QScreen* screen = QGuiApplication::screenAt(place.toPoint());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return x11::pixelAt(place, *screen);
}

} // namespace

// Without a compositor the server itself composes windows that could blend, at each change: a large
// pin would take twice as long to resize. Its corners stay cut if one comes later.
X11Pin::X11Pin(QWidget& widget, qreal radius, std::function<void()> changed,
               std::shared_ptr<PanelWindows> panels, std::shared_ptr<CompositorWatch> compositor,
               std::function<void(const X11Pin&)> gone)
    : m_widget(widget)
    , m_radius(radius)
    , m_changed(std::move(changed))
    , m_gone(std::move(gone))
    , m_panels(std::move(panels))
    , m_compositor(std::move(compositor))
    , m_window(widget, x11::PanelTraits::ofPin(m_compositor->runs()), m_panels->events(),
               m_panels->clock())
    , m_room(widget)
{
    widget.installEventFilter(this);
    m_compositor->whenChanged(this, [this] {
        cutForWidget();
        m_changed();
    });
    m_subscription =
        m_panels->events()->listen([this](const auto& event) { return handle(event); });
}

X11Pin::~X11Pin()
{
    m_gone(*this);
}

void X11Pin::show(const PinPlace& place)
{
    m_scale = place.scale;
    m_shape.open(place.native.size());
    m_window.show(place.native);
    m_panels->keepPressesAway();
    cutForWidget();
}

void X11Pin::place(const PinPlace& place)
{
    m_scale = place.scale;
    const QSize shown = pixels();
    cut(m_shape.ask(place.native.size(), shown));
    m_window.moveTo(place.native);
    if (pixels() == place.native.size())
        cutForWidget();
}

QSize X11Pin::pixels() const
{
    return m_shape.shown(m_widget.size(), m_widget.devicePixelRatioF());
}

bool X11Pin::blends() const
{
    return m_compositor->runs() && m_window.canBlend();
}

QPoint X11Pin::onDesktop(QPointF place)
{
    return rect().topLeft() + (place * m_widget.devicePixelRatioF()).toPoint();
}

void X11Pin::grip()
{
    if (!m_widget.isActiveWindow())
        m_window.focus();
}

// The pixel that was rounded to a point, as long as the pointer is still there.
QPoint X11Pin::hand(const QMouseEvent& event)
{
    const QPoint rounded = roundedPlace(event);
    const auto now = x11::pointer();
    if (!now)
        return rounded;
    const QPoint off = *now - rounded;
    return std::abs(off.x()) <= m_scale && std::abs(off.y()) <= m_scale ? *now : rounded;
}

bool X11Pin::setOverFullScreen(bool over)
{
    if (m_window.isManaged() == !over)
        return false;
    const bool shown = m_window.isShown();
    const QRect native = rect();
    m_window.setManaged(!over);
    m_room.forget();
    if (m_cut)
        cut(*std::exchange(m_cut, std::nullopt)); // the new window is whole
    if (shown) {
        m_window.show(native);
        m_panels->keepPressesAway();
    }
    return shown;
}

void X11Pin::cutForWidget()
{
    cut(m_shape.cut(pixels(), [this] { return rect().size(); }));
}

// By the pixel: a widget's own mask counts in points, which is too coarse for corners.
void X11Pin::cut(QSize pixels)
{
    const QSize wanted = blends() ? QSize() : pixels;
    if (m_cut == wanted)
        return;
    const bool isWhole = !m_cut;
    m_cut = wanted;
    if (isWhole && wanted.isEmpty())
        return;
    x11::setShape(m_window.id(), x11::PinShape::rounded(wanted, m_radius * m_scale));
    xcb_flush(x11::connection());
}

X11Events::Verdict X11Pin::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (notify.window == m_window.id())
            m_room.resized({notify.width, notify.height});
    }
    return X11Events::Verdict::pass;
}

bool X11Pin::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        cutForWidget();
    return QObject::eventFilter(watched, event);
}

} // namespace brindlecam
