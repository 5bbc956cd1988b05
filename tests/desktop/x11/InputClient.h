#pragma once

#include <QByteArray>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace brindlecam::test {

/// Another program on the same X server: a connection of its own with one window that counts what
/// reaches it. Nothing is read from the server except inside the calls.
class InputClient final {
public:
    enum class Kind { managed, overrideRedirect };

    explicit InputClient(const QRect& rect, Kind kind = Kind::managed);
    ~InputClient();
    InputClient(const InputClient&) = delete;
    InputClient& operator=(const InputClient&) = delete;

    [[nodiscard]] xcb_connection_t* connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] xcb_window_t root() const;

    /// Gives the window the focus: through the window manager when there is one.
    void activate();
    [[nodiscard]] bool hasFocus();
    [[nodiscard]] xcb_window_t focusedWindow();
    /// Tries to grab a key on the root; false when somebody has it.
    bool grabKey(std::uint8_t keyCode, std::uint16_t state);
    void ungrabKeys();
    /// Whether nobody else has grabbed the keyboard.
    [[nodiscard]] bool canHaveKeyboard();
    [[nodiscard]] bool viewable();
    void raise();

    /// Key presses and releases, button presses and focus gains since the start.
    [[nodiscard]] int keyEvents();
    [[nodiscard]] int buttonPresses();
    [[nodiscard]] int focusGains();

    [[nodiscard]] xcb_atom_t atom(const char* name);
    /// Waits until the server has done everything asked for so far.
    void sync();

private:
    void read();

    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    int m_keyEvents = 0;
    int m_buttonPresses = 0;
    int m_focusGains = 0;
};

/// Runs a program to its end; true when it succeeded. The event loop does not run meanwhile.
bool run(const QString& program, const QStringList& arguments);
/// xdotool with these words.
bool xdotool(const QString& words);
/// Lets the event loop run until what the server has to say has been handled.
void settle();

} // namespace brindlecam::test
