#include "desktop/support/x11/X11Rival.h"

#include "desktop/support/x11/X11Keys.h"

#include <algorithm>

namespace brindlecam::desktop {

X11Rival::X11Rival(const QString& display)
    : m_connection(display)
{
}

bool X11Rival::takeHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    return std::ranges::all_of(m_connection.keycodes(keysymOf(key)), [&](xcb_keycode_t code) {
        return takeCode(code, maskOf(modifiers));
    });
}

bool X11Rival::takeKeyboard()
{
    return grabKeyboard() == XCB_GRAB_STATUS_SUCCESS;
}

bool X11Rival::takePointer()
{
    return grabPointer() == XCB_GRAB_STATUS_SUCCESS;
}

void X11Rival::giveBackKeyboardAndPointer()
{
    xcb_ungrab_keyboard(m_connection.raw(), XCB_CURRENT_TIME);
    xcb_ungrab_pointer(m_connection.raw(), XCB_CURRENT_TIME);
    m_connection.sync();
}

bool X11Rival::gotKeys()
{
    m_connection.sync();
    bool got = false;
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())})
        got = got || (event->response_type & 0x7f) == XCB_KEY_PRESS;
    return got;
}

bool X11Rival::isHotKeyTaken(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    return m_connection.isKeyGrabbedByOther(keysymOf(key), maskOf(modifiers));
}

bool X11Rival::isKeyboardTaken()
{
    const bool free = takeKeyboard();
    xcb_ungrab_keyboard(m_connection.raw(), XCB_CURRENT_TIME);
    m_connection.sync();
    return !free;
}

bool X11Rival::isPointerTaken()
{
    const std::uint8_t status = grabPointer();
    xcb_ungrab_pointer(m_connection.raw(), XCB_CURRENT_TIME);
    m_connection.sync();
    return status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

bool X11Rival::takeCode(xcb_keycode_t code, std::uint16_t mask)
{
    const auto cookie = xcb_grab_key_checked(m_connection.raw(), 1, m_connection.root(), mask, code,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    return !Owned<xcb_generic_error_t>(xcb_request_check(m_connection.raw(), cookie));
}

void X11Rival::giveBackHotKeys()
{
    xcb_ungrab_key(m_connection.raw(), XCB_GRAB_ANY, m_connection.root(), XCB_MOD_MASK_ANY);
    m_connection.sync();
}

std::uint8_t X11Rival::grabKeyboard()
{
    xcb_connection_t* const connection = m_connection.raw();
    const Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
        connection,
        xcb_grab_keyboard(connection, 1, m_connection.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                          XCB_GRAB_MODE_ASYNC),
        nullptr));
    return reply ? reply->status : std::uint8_t{XCB_GRAB_STATUS_ALREADY_GRABBED};
}

std::uint8_t X11Rival::grabPointer()
{
    xcb_connection_t* const connection = m_connection.raw();
    const Owned<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        connection,
        xcb_grab_pointer(connection, 1, m_connection.root(), XCB_EVENT_MASK_BUTTON_PRESS,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE,
                         XCB_CURRENT_TIME),
        nullptr));
    return reply ? reply->status : std::uint8_t{XCB_GRAB_STATUS_ALREADY_GRABBED};
}

} // namespace brindlecam::desktop
