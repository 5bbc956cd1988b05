#include "platform/x11/keys/X11FrontApplication.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <utility>

namespace brindlecam {

X11FrontApplication::X11FrontApplication(std::shared_ptr<X11Events> events)
    : m_events(std::move(events))
{
}

void X11FrontApplication::remember()
{
    m_givingBack = false;
    m_events->forgetPresses();
    // A new session begins while the last one's keys are still held: whoever was in front before
    // that one gets the focus back after this one.
    if (m_sink)
        return;
    if (const auto front = foreignFront())
        m_front = front;
    else if (!m_front)
        m_front = Front{};
}

std::optional<X11FrontApplication::Front> X11FrontApplication::foreignFront()
{
    Front front;
    if (x11::hasWindowManager()) {
        const auto active =
            x11::property32(x11::root(), x11::atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
        if (!active.empty())
            front.active = active.front();
    }
    const x11::Owned<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
    if (focus)
        front.focus = focus->focus;
    if (x11::isOurs(front.focus.value_or(XCB_WINDOW_NONE)) || x11::isOurs(front.active))
        return std::nullopt;
    return front;
}

void X11FrontApplication::giveBack()
{
    if (!m_front || m_givingBack)
        return;
    m_givingBack = true;
    if (m_sink) {
        m_sink->take();
        return;
    }
    // A key that was down before the session belongs to whoever had it then.
    const x11::KeySet keys = x11::keysDown() & ~x11::modifierKeys() & m_events->presses();
    if (keys.none()) {
        handBack();
        return;
    }
    m_sink = std::make_unique<KeySink>(m_events, keys, [this] { keysAreUp(); });
}

void X11FrontApplication::keysAreUp()
{
    if (m_givingBack && userMovedOn()) {
        m_givingBack = false;
        m_front.reset();
    } else if (m_givingBack) {
        handBack();
    }
    m_sink.reset();
}

// While the keys were held the user has chosen another window.
bool X11FrontApplication::userMovedOn() const
{
    if (!m_front || !x11::hasWindowManager())
        return false;
    const auto active =
        x11::property32(x11::root(), x11::atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    return !active.empty() && active.front() != XCB_WINDOW_NONE &&
           active.front() != m_front->active && !x11::isOurs(active.front());
}

void X11FrontApplication::handBack()
{
    m_givingBack = false;
    const Front front = std::exchange(m_front, std::nullopt).value_or(Front{});
    if (front.active != XCB_WINDOW_NONE && x11::hasWindowManager())
        x11::activate(front.active, m_events->lastTime());
    else if (front.focus ? !x11::setFocus(*front.focus) : !x11::hasWindowManager())
        x11::setFocus(XCB_INPUT_FOCUS_POINTER_ROOT);
}

} // namespace brindlecam
