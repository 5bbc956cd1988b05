#include "desktop/support/x11/X11Input.h"

#include "desktop/support/x11/X11Keys.h"

#include <xcb/xtest.h>

#include <QThread>
#include <QtGlobal>

#include <algorithm>

namespace brindlecam::desktop {

X11Input::X11Input(const QString& display)
    : m_connection(display)
{
}

X11Input::~X11Input()
{
    for (const std::uint8_t button : m_downButtons)
        xcb_test_fake_input(m_connection.raw(), XCB_BUTTON_RELEASE, button, 0, 0, 0, 0, 0);
    for (const std::uint8_t code : m_downKeys)
        xcb_test_fake_input(m_connection.raw(), XCB_KEY_RELEASE, code, 0, 0, 0, 0, 0);
    m_connection.sync();
}

void X11Input::press(Qt::Key key)
{
    keyEvent(XCB_KEY_PRESS, key);
}

void X11Input::release(Qt::Key key)
{
    keyEvent(XCB_KEY_RELEASE, key);
}

void X11Input::moveTo(QPoint pixel)
{
    xcb_test_fake_input(m_connection.raw(), XCB_MOTION_NOTIFY, 0, 0, m_connection.root(),
                        static_cast<std::int16_t>(pixel.x()), static_cast<std::int16_t>(pixel.y()),
                        0);
    m_connection.sync();
}

void X11Input::press(Button button)
{
    const auto detail = static_cast<std::uint8_t>(button);
    m_downButtons.push_back(detail);
    fake(XCB_BUTTON_PRESS, detail);
}

void X11Input::release(Button button)
{
    const auto detail = static_cast<std::uint8_t>(button);
    std::erase(m_downButtons, detail);
    fake(XCB_BUTTON_RELEASE, detail);
}

QPoint X11Input::pointer() const
{
    const auto cookie = xcb_query_pointer(m_connection.raw(), m_connection.root());
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection.raw(), cookie, nullptr));
    return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

void X11Input::fake(std::uint8_t type, std::uint8_t detail)
{
    xcb_test_fake_input(m_connection.raw(), type, detail, 0, m_connection.root(), 0, 0, 0);
    m_connection.sync();
}

// A release and a press within one millisecond are what a held key's repeat looks like; no hand is
// that fast.
void X11Input::passMillisecond() const
{
    constexpr int kApart = 2;
    while (m_lastRelease.isValid() && !m_lastRelease.hasExpired(kApart))
        QThread::msleep(1);
}

void X11Input::keyEvent(std::uint8_t type, Qt::Key key)
{
    const auto codes = m_connection.keycodes(keysymOf(key));
    if (codes.empty())
        qFatal("the keyboard has no key of the number 0x%x", static_cast<unsigned>(key));
    if (type == XCB_KEY_PRESS) {
        m_downKeys.push_back(codes.front());
        passMillisecond();
    } else {
        std::erase(m_downKeys, codes.front());
    }
    fake(type, codes.front());
    if (type == XCB_KEY_RELEASE)
        m_lastRelease.start(); // the server has taken it
}

} // namespace brindlecam::desktop
