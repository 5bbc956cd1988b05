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
    letGo();
}

void X11Input::press(Qt::Key key)
{
    pressCode(code(key));
}

void X11Input::release(Qt::Key key)
{
    releaseCode(code(key));
}

void X11Input::moveTo(QPoint pixel)
{
    fake(XCB_MOTION_NOTIFY, 0, pixel);
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

void X11Input::letGo()
{
    // The last one first, as hands do.
    for (; !m_downButtons.empty(); m_downButtons.pop_back())
        send(XCB_BUTTON_RELEASE, m_downButtons.back());
    for (; !m_downKeys.empty(); m_downKeys.pop_back())
        send(XCB_KEY_RELEASE, m_downKeys.back());
    m_connection.sync();
    m_lastRelease.start();
}

void X11Input::tapCode(xcb_keycode_t code)
{
    pressCode(code);
    releaseCode(code);
}

void X11Input::pressCode(xcb_keycode_t code)
{
    m_downKeys.push_back(code);
    passMillisecond();
    fake(XCB_KEY_PRESS, code);
}

void X11Input::releaseCode(xcb_keycode_t code)
{
    std::erase(m_downKeys, code);
    fake(XCB_KEY_RELEASE, code);
    m_lastRelease.start();
}

void X11Input::fake(std::uint8_t type, std::uint8_t detail, QPoint pixel)
{
    send(type, detail, pixel);
    if (!m_hurries)
        m_connection.sync();
}

void X11Input::send(std::uint8_t type, std::uint8_t detail, QPoint pixel)
{
    m_lastSent = std::chrono::steady_clock::now();
    xcb_test_fake_input(m_connection.raw(), type, detail, 0, m_connection.root(),
                        static_cast<std::int16_t>(pixel.x()), static_cast<std::int16_t>(pixel.y()),
                        0);
    xcb_flush(m_connection.raw());
}

xcb_keycode_t X11Input::code(Qt::Key key)
{
    forgetChangedCodes();
    const auto known = m_codes.constFind(key);
    if (known != m_codes.constEnd())
        return *known;
    const auto codes = m_connection.keycodes(keysymOf(key));
    if (codes.empty())
        qFatal("the keyboard has no key of the number 0x%x", static_cast<unsigned>(key));
    return *m_codes.insert(key, codes.front());
}

void X11Input::forgetChangedCodes()
{
    // Whoever has changed it may have been told so before we are.
    if (!m_hurries)
        m_connection.sync();
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
        if ((event->response_type & 0x7f) == XCB_MAPPING_NOTIFY)
            m_codes.clear();
    }
}

// A release and a press within one millisecond are what a held key's repeat looks like; no hand is
// that fast.
void X11Input::passMillisecond() const
{
    constexpr int kApart = 2;
    while (m_lastRelease.isValid() && !m_lastRelease.hasExpired(kApart))
        QThread::msleep(1);
}

} // namespace brindlecam::desktop
