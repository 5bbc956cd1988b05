#pragma once

#include "Eyes.h"

#include <QHash>

#include <cstdint>
#include <initializer_list>

namespace brindlecam::bench {

/// Keyboard and mouse with a stopwatch: every key is looked up beforehand and nothing waits for the
/// server, so the clock starts where the event does.
class Hands final {
public:
    explicit Hands(const QString& display);

    /// Presses the modifiers, waits until they are down, strikes the key and lets everything go
    /// again later, with letGo(). Returns the moment just before the key's press was sent.
    Clock::time_point strike(std::initializer_list<xcb_keysym_t> modifiers, xcb_keysym_t key);
    /// Lets go whatever strike() holds down.
    void letGo();
    void tap(xcb_keysym_t key);

    /// Returns the moment just before the motion was sent.
    Clock::time_point moveTo(QPoint pixel);
    void pressButton();
    /// Returns the moment just before the release was sent.
    Clock::time_point releaseButton();
    void click(QPoint pixel);

    enum class Wheel : std::uint8_t { up = 4, down = 5 }; ///< buttons
    /// Turns the wheel by a notch. Returns the moment just before that was sent.
    Clock::time_point turn(Wheel wheel);

private:
    void fake(std::uint8_t type, std::uint8_t detail, QPoint pixel = {});
    [[nodiscard]] std::uint8_t code(xcb_keysym_t key);

    desktop::Connection m_connection;
    QHash<xcb_keysym_t, std::uint8_t> m_codes;
    std::vector<std::uint8_t> m_down;
};

} // namespace brindlecam::bench
