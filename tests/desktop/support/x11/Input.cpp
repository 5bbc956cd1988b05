#include "desktop/support/x11/Input.h"

#include <xcb/xtest.h>

#include <QThread>
#include <QtGlobal>

#include <algorithm>

namespace brindlecam::desktop {

Input::Input(const QString& display)
    : m_connection(display)
{
}

Input::~Input()
{
    for (const std::uint8_t button : m_downButtons)
        xcb_test_fake_input(m_connection.raw(), XCB_BUTTON_RELEASE, button, 0, 0, 0, 0, 0);
    for (const std::uint8_t code : m_downKeys)
        xcb_test_fake_input(m_connection.raw(), XCB_KEY_RELEASE, code, 0, 0, 0, 0, 0);
    m_connection.sync();
}

void Input::press(xcb_keysym_t key)
{
    keyEvent(XCB_KEY_PRESS, key);
}

void Input::release(xcb_keysym_t key)
{
    keyEvent(XCB_KEY_RELEASE, key);
}

void Input::chord(std::initializer_list<xcb_keysym_t> keys)
{
    for (const xcb_keysym_t key : keys)
        press(key);
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
        release(*key);
}

void Input::type(std::string_view letters)
{
    // Latin-1 keysyms have the numbers of their characters.
    for (const char letter : letters)
        tap(static_cast<xcb_keysym_t>(static_cast<unsigned char>(letter)));
}

void Input::moveTo(QPoint pixel)
{
    xcb_test_fake_input(m_connection.raw(), XCB_MOTION_NOTIFY, 0, 0, m_connection.root(),
                        static_cast<std::int16_t>(pixel.x()), static_cast<std::int16_t>(pixel.y()),
                        0);
    m_connection.sync();
}

void Input::press(Button button)
{
    const auto detail = static_cast<std::uint8_t>(button);
    m_downButtons.push_back(detail);
    fake(XCB_BUTTON_PRESS, detail);
}

void Input::release(Button button)
{
    const auto detail = static_cast<std::uint8_t>(button);
    std::erase(m_downButtons, detail);
    fake(XCB_BUTTON_RELEASE, detail);
}

void Input::click(QPoint pixel, Button button)
{
    moveTo(pixel);
    press(button);
    release(button);
}

void Input::doubleClick(QPoint pixel)
{
    click(pixel);
    click(pixel);
}

void Input::drag(QPoint from, QPoint to, int steps)
{
    moveTo(from);
    press(Button::left);
    glideTo(to, steps);
    release(Button::left);
}

void Input::glideTo(QPoint to, int steps)
{
    const QPoint from = pointer();
    for (int step = 1; step <= steps; ++step)
        moveTo(from + (to - from) * step / steps);
}

QPoint Input::pointer() const
{
    const auto cookie = xcb_query_pointer(m_connection.raw(), m_connection.root());
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection.raw(), cookie, nullptr));
    return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

void Input::fake(std::uint8_t type, std::uint8_t detail)
{
    xcb_test_fake_input(m_connection.raw(), type, detail, 0, m_connection.root(), 0, 0, 0);
    m_connection.sync();
}

// A release and a press within one millisecond are what a held key's repeat looks like; no hand is
// that fast.
void Input::passMillisecond() const
{
    constexpr int kApart = 2;
    while (m_lastRelease.isValid() && !m_lastRelease.hasExpired(kApart))
        QThread::msleep(1);
}

void Input::keyEvent(std::uint8_t type, xcb_keysym_t key)
{
    const auto codes = m_connection.keycodes(key);
    if (codes.empty())
        qFatal("the keyboard has no key for keysym 0x%x", key);
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
