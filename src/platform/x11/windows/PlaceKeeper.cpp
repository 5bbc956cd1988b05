#include "platform/x11/windows/PlaceKeeper.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/windows/QtOnX11.h"
#include "platform/x11/windows/WindowHints.h"

#include <QGuiApplication>
#include <QScreen>

namespace brindlecam {

namespace {

constexpr int kMostCorrections = 8; ///< per settle(); more means somebody disagrees

QScreen* screenOf(const QRect& native)
{
    for (QScreen* screen : QGuiApplication::screens()) {
        if (x11::pixelsOf(*screen).contains(native.center()))
            return screen;
    }
    return QGuiApplication::primaryScreen();
}

} // namespace

PlaceKeeper::PlaceKeeper(QWidget& widget, const x11::PanelTraits& traits)
    : m_widget(widget)
    , m_traits(traits)
{
}

xcb_window_t PlaceKeeper::id() const
{
    return x11::idOf(m_widget);
}

void PlaceKeeper::settle(const QRect& native)
{
    m_native = native;
    m_asked.settle(native);
    m_correctionsLeft = kMostCorrections;
    if (native.isEmpty())
        return;
    QScreen* screen = screenOf(native);
    m_widget.setScreen(screen);
    m_widget.setGeometry(x11::roundedPoints(native, *screen));
}

void PlaceKeeper::move(const QRect& native)
{
    m_native = native;
    m_asked.ask(native);
    m_correctionsLeft = 0; // a hand moves on before the window manager has answered
    apply();
    xcb_flush(x11::connection());
}

void PlaceKeeper::apply()
{
    if (m_native.isEmpty())
        return;
    if (m_traits.managed)
        x11::setSizeHints(id());
    x11::configure(id(), m_native);
}

QRect PlaceKeeper::rect()
{
    const auto seen = x11::rectOnRoot(id());
    if (!seen || m_native.isEmpty())
        return seen.value_or(QRect());
    if (m_correctionsLeft == 0 && !m_asked.leadTo(*seen)) {
        m_native = *seen;
        m_asked.settle(*seen);
    }
    return m_native;
}

void PlaceKeeper::correct(const QRect& actual)
{
    if (m_native.isEmpty() || m_correctionsLeft == 0)
        return;
    if (actual != m_native) {
        --m_correctionsLeft;
        apply();
        xcb_flush(x11::connection());
    } else if (!m_traits.keepsPlace) {
        m_correctionsLeft = 0;
    }
}

// A window in a window manager's frame is told its place in that. Before it is mapped it may be
// right and yet come into the frame only then, wherever that is.
void PlaceKeeper::correctOnRoot()
{
    if (!x11::isMapped(id()))
        return;
    if (const auto actual = x11::rectOnRoot(id()))
        correct(*actual);
}

void PlaceKeeper::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (notify.window != id())
            return;
        if (!m_traits.managed)
            correct({notify.x, notify.y, notify.width, notify.height});
        else if (m_correctionsLeft > 0)
            correctOnRoot();
    } else if (kindOf(event) == XCB_MAP_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (notify.window == id() && m_traits.managed)
            correctOnRoot();
    }
}

} // namespace brindlecam
