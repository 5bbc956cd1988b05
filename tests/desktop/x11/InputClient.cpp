#include "x11/InputClient.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <QCoreApplication>
#include <QTest>

#include <array>
#include <cstring>

namespace brindlecam::test {

InputClient::InputClient(const QRect& rect, Kind kind)
    : m_connection(xcb_connect(nullptr, nullptr))
{
    m_window = xcb_generate_id(m_connection);
    const std::array<std::uint32_t, 3> values{
        0x00336699, kind == Kind::overrideRedirect ? 1u : 0u,
        XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
            XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(
        m_connection, XCB_COPY_FROM_PARENT, m_window, root(), static_cast<std::int16_t>(rect.x()),
        static_cast<std::int16_t>(rect.y()), static_cast<std::uint16_t>(rect.width()),
        static_cast<std::uint16_t>(rect.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
        values.data());
    // User-given place and size, so that a window manager leaves the window there.
    const std::array<std::uint32_t, 18> hints{
        3, static_cast<std::uint32_t>(rect.x()), static_cast<std::uint32_t>(rect.y()),
        static_cast<std::uint32_t>(rect.width()), static_cast<std::uint32_t>(rect.height())};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    xcb_map_window(m_connection, m_window);
    sync();
}

InputClient::~InputClient()
{
    xcb_disconnect(m_connection);
}

xcb_window_t InputClient::root() const
{
    return xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

void InputClient::activate()
{
    if (!QTest::qWaitFor([this] { return viewable(); }))
        return;
    if (x11::hasWindowManager()) {
        // A new window gets the focus by itself. A request that comes on top of that would be
        // answered at a time that nobody can wait for.
        constexpr int kNewWindowMs = 1000;
        if (!QTest::qWaitFor([this] { return hasFocus(); }, kNewWindowMs))
            x11::activate(m_window, XCB_CURRENT_TIME);
        return;
    }
    xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
    sync();
}

bool InputClient::hasFocus()
{
    return focusedWindow() == m_window;
}

xcb_window_t InputClient::focusedWindow()
{
    const x11::Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

bool InputClient::grabKey(std::uint8_t keyCode, std::uint16_t state)
{
    const x11::Owned<xcb_generic_error_t> error(xcb_request_check(
        m_connection, xcb_grab_key_checked(m_connection, 0, root(), state, keyCode,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    return !error;
}

void InputClient::ungrabKeys()
{
    xcb_ungrab_key(m_connection, XCB_GRAB_ANY, root(), XCB_MOD_MASK_ANY);
    sync();
}

bool InputClient::canHaveKeyboard()
{
    const x11::Owned<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(m_connection,
                                xcb_grab_keyboard(m_connection, 1, root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
    sync();
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

bool InputClient::viewable()
{
    const x11::Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void InputClient::raise()
{
    constexpr std::uint32_t kAbove = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_STACK_MODE, &kAbove);
    sync();
}

int InputClient::keyEvents()
{
    read();
    return m_keyEvents;
}

int InputClient::buttonPresses()
{
    read();
    return m_buttonPresses;
}

int InputClient::focusGains()
{
    read();
    return m_focusGains;
}

xcb_atom_t InputClient::atom(const char* name)
{
    const x11::Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void InputClient::sync()
{
    const x11::Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

void InputClient::read()
{
    sync();
    while (const x11::Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
            ++m_keyEvents;
            break;
        case XCB_BUTTON_PRESS:
            ++m_buttonPresses;
            break;
        case XCB_FOCUS_IN:
            ++m_focusGains;
            break;
        }
    }
}

bool run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

bool xdotool(const QString& words)
{
    return run(QStringLiteral("xdotool"), words.split(QLatin1Char(' ')));
}

void settle()
{
    for (int round = 0; round < 3; ++round) {
        const x11::Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
        QCoreApplication::processEvents();
        QTest::qWait(20);
    }
}

} // namespace brindlecam::test
