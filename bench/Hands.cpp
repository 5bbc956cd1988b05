#include "Hands.h"

#include <xcb/xtest.h>

namespace brindlecam::bench {

namespace {

constexpr std::uint8_t kLeftButton = 1;

} // namespace

Hands::Hands(const QString& display)
    : m_connection(display)
{
}

Clock::time_point Hands::strike(std::initializer_list<xcb_keysym_t> modifiers, xcb_keysym_t key)
{
    const std::uint8_t struck = code(key);
    for (const xcb_keysym_t modifier : modifiers) {
        m_down.push_back(code(modifier));
        fake(XCB_KEY_PRESS, m_down.back());
    }
    m_connection.sync();
    m_down.push_back(struck);
    const auto moment = Clock::now();
    fake(XCB_KEY_PRESS, struck);
    return moment;
}

void Hands::letGo()
{
    while (!m_down.empty()) {
        fake(XCB_KEY_RELEASE, m_down.back());
        m_down.pop_back();
    }
    m_connection.sync();
}

void Hands::tap(xcb_keysym_t key)
{
    strike({}, key);
    letGo();
}

Clock::time_point Hands::moveTo(QPoint pixel)
{
    const auto moment = Clock::now();
    fake(XCB_MOTION_NOTIFY, 0, pixel);
    return moment;
}

void Hands::pressButton()
{
    fake(XCB_BUTTON_PRESS, kLeftButton);
    m_connection.sync();
}

Clock::time_point Hands::releaseButton()
{
    const auto moment = Clock::now();
    fake(XCB_BUTTON_RELEASE, kLeftButton);
    m_connection.sync();
    return moment;
}

void Hands::click(QPoint pixel)
{
    moveTo(pixel);
    pressButton();
    releaseButton();
}

Clock::time_point Hands::turn(Wheel wheel)
{
    const auto moment = Clock::now();
    fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(wheel));
    fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(wheel));
    return moment;
}

void Hands::fake(std::uint8_t type, std::uint8_t detail, QPoint pixel)
{
    xcb_test_fake_input(m_connection.raw(), type, detail, 0, m_connection.root(),
                        static_cast<std::int16_t>(pixel.x()), static_cast<std::int16_t>(pixel.y()),
                        0);
    xcb_flush(m_connection.raw());
}

std::uint8_t Hands::code(xcb_keysym_t key)
{
    if (!m_codes.contains(key)) {
        const auto codes = m_connection.keycodes(key);
        if (codes.empty())
            qFatal("the keyboard has no key for keysym 0x%x", key);
        m_codes.insert(key, codes.front());
    }
    return m_codes.value(key);
}

} // namespace brindlecam::bench
