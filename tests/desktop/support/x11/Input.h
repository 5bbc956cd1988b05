#pragma once

#include "desktop/support/x11/Connection.h"

#include <QElapsedTimer>
#include <QPoint>

#include <X11/keysym.h>

#include <initializer_list>
#include <string_view>

namespace brindlecam::desktop {

enum class Button : std::uint8_t { left = 1, middle = 2, right = 3, wheelUp = 4, wheelDown = 5 };

/// The hands on keyboard and mouse: events the server cannot tell from real ones. Keys are keysyms
/// (XK_… of X11/keysym.h), places native pixels of the whole screen. Every call returns once the
/// server has taken the event. Keys and buttons still down are let go at the end.
class Input final {
public:
    explicit Input(const QString& display);
    ~Input();

    void press(xcb_keysym_t key);
    void release(xcb_keysym_t key);
    /// Presses the keys in order and lets them go in reverse: chord({XK_Super_L, XK_Shift_L,
    /// XK_9}).
    void chord(std::initializer_list<xcb_keysym_t> keys);
    void tap(xcb_keysym_t key) { chord({key}); }
    /// Types plain lower-case ASCII letters, digits and spaces.
    void type(std::string_view letters);

    void moveTo(QPoint pixel);
    void press(Button button);
    void release(Button button);
    void click(QPoint pixel, Button button = Button::left);
    void doubleClick(QPoint pixel);
    /// Presses at `from`, goes to `to` in `steps` moves and lets go.
    void drag(QPoint from, QPoint to, int steps = 12);
    /// The moves of a drag without press and release, starting wherever the pointer is.
    void glideTo(QPoint to, int steps = 12);
    [[nodiscard]] QPoint pointer() const;

private:
    void fake(std::uint8_t type, std::uint8_t detail);
    void keyEvent(std::uint8_t type, xcb_keysym_t key);
    void passMillisecond() const;

    Connection m_connection;
    std::vector<std::uint8_t> m_downKeys;
    std::vector<std::uint8_t> m_downButtons;
    QElapsedTimer m_lastRelease;
};

} // namespace brindlecam::desktop
