#include "platform/x11/windows/FocusKeeper.h"

#include "platform/x11/connection/ServerClock.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/windows/QtOnX11.h"
#include "platform/x11/windows/WindowHints.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <chrono>

namespace brindlecam {

namespace {

// A window manager that hears late of a window's end hands its focus to another one, although an
// overlay has got the keyboard meanwhile.
constexpr std::chrono::seconds kInsistence{1};
constexpr int kMostInsistences = 3;

} // namespace

FocusKeeper::FocusKeeper(QWidget& widget, const x11::PanelTraits& traits, x11::ServerClock& clock)
    : m_widget(widget)
    , m_traits(traits)
    , m_clock(clock)
{
}

xcb_window_t FocusKeeper::id() const
{
    return x11::idOf(m_widget);
}

void FocusKeeper::watchPresses()
{
    QWindow* window = m_widget.windowHandle();
    if (!m_traits.insists || m_watched == window)
        return;
    window->installEventFilter(this);
    m_watched = window;
}

void FocusKeeper::focus()
{
    bringBack();
    m_focusWhenMapped = !x11::isViewable(id());
    if (!m_focusWhenMapped)
        focusNow();
}

// Somebody who asks again for a window may have minimised it or left it on another desktop.
void FocusKeeper::bringBack()
{
    if (!m_traits.framed || !m_widget.isVisible() || !x11::isPutAway(id()))
        return;
    x11::setUserTime(id(), m_clock.now());
    x11::moveToThisDesktop(id());
    m_widget.setWindowState(m_widget.windowState() & ~Qt::WindowMinimized);
    xcb_map_window(x11::connection(), id()); // for window managers that know no activation
    focusNow();
}

void FocusKeeper::focusNow()
{
    m_focusWhenMapped = false;
    if (m_traits.insists) {
        m_insists.setRemainingTime(kInsistence);
        m_insistencesLeft = kMostInsistences;
    }
    if (m_traits.managed && x11::hasWindowManager()) {
        x11::raise(id());
        x11::activate(id(), m_clock.now());
    } else {
        if (m_traits.framed)
            x11::raise(id());
        x11::setFocus(id());
    }
}

void FocusKeeper::insist(const xcb_focus_out_event_t& event)
{
    if (event.event != id() || m_insistencesLeft == 0 || m_insists.hasExpired() ||
        !x11::isViewable(id()))
        return;
    const x11::Owned<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
    if (!focus || x11::isOurs(focus->focus))
        return;
    --m_insistencesLeft;
    x11::setFocus(id());
}

void FocusKeeper::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) == XCB_MAP_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (notify.window == id() && m_focusWhenMapped)
            focusNow();
    } else if (kindOf(event) == XCB_FOCUS_OUT) {
        insist(reinterpret_cast<const xcb_focus_out_event_t&>(event));
    }
}

bool FocusKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched != QGuiApplication::focusWindow())
        focus();
    return QObject::eventFilter(watched, event);
}

} // namespace brindlecam
