#include "platform/x11/windows/PanelWindow.h"

#include "platform/x11/connection/ServerClock.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/windows/QtOnX11.h"
#include "platform/x11/windows/WindowHints.h"

#include <QWindow>

namespace brindlecam {

PanelWindow::PanelWindow(QWidget& widget, const x11::PanelTraits& traits,
                         std::shared_ptr<X11Events> events, x11::ServerClock& clock,
                         const QRect& native)
    : m_widget(widget)
    , m_traits(traits)
    , m_clock(clock)
    , m_place(widget, m_traits)
    , m_focus(widget, m_traits, clock)
    , m_exposures(widget)
{
    m_widget.setWindowFlags(m_traits.framed ? m_widget.windowFlags() | m_traits.flags
                                            : m_traits.flags);
    m_widget.setAttribute(Qt::WA_ShowWithoutActivating, !m_traits.activates);
    m_widget.setAttribute(Qt::WA_TranslucentBackground, m_traits.blends);
    m_place.settle(native);
    if (!m_traits.framed)
        m_widget.winId();
    m_subscription = events->listen([this](const auto& event) { return handle(event); });
}

xcb_window_t PanelWindow::id() const
{
    return x11::idOf(m_widget);
}

void PanelWindow::show(const QRect& native)
{
    // Dialogs come from hot keys and commands, of which Qt knows no time.
    const bool activates =
        m_traits.activates && !m_widget.testAttribute(Qt::WA_ShowWithoutActivating);
    const xcb_timestamp_t now = activates ? m_clock.now() : XCB_CURRENT_TIME;
    m_place.settle(native);
    m_widget.winId();
    m_focus.watchPresses();
    x11::setHints(id(), m_traits);
    x11::setUserTime(id(), now);
    m_place.apply();
    m_widget.show();
    // QXcbWindow::show() has written the time of Qt's last event over ours, and may have placed the
    // window by points again.
    x11::setUserTime(id(), now);
    m_place.apply();
    x11::raise(id());
    xcb_flush(x11::connection());
    if (activates)
        focus();
}

void PanelWindow::setManaged(bool managed)
{
    m_traits.managed = managed;
    // A new window: the old one may be in the window manager's frame for some time yet.
    m_widget.windowHandle()->destroy();
    m_widget.setWindowFlags(m_traits.flags |
                            (managed ? Qt::WindowFlags() : Qt::BypassWindowManagerHint));
    m_widget.winId();
}

void PanelWindow::raise()
{
    x11::raise(id());
}

void PanelWindow::lowerBelow(const PanelWindow& other)
{
    if (!m_traits.managed)
        x11::lowerBelow(id(), x11::childOfRoot(other.id()));
}

X11Events::Verdict PanelWindow::handle(const xcb_generic_event_t& event)
{
    m_place.handle(event);
    m_focus.handle(event);
    return m_exposures.handle(event);
}

} // namespace brindlecam
