#pragma once

#include <QList>
#include <QPoint>

#include <chrono>
#include <cstdint>
#include <string_view>

namespace brindlecam::desktop {

enum class Button : std::uint8_t { left = 1, middle = 2, right = 3, wheelUp = 4, wheelDown = 5 };

/// The hands on keyboard and mouse: events that the program cannot tell from real ones. A key is
/// named by what it types without modifiers, places are native pixels of the whole screen. Every
/// call returns once the event has been taken, unless the hands hurry. Keys and buttons still down
/// are let go at the end.
class Input {
public:
    Input() = default;
    virtual ~Input() = default;
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    virtual void press(Qt::Key key) = 0;
    virtual void release(Qt::Key key) = 0;
    /// Presses the keys in order and lets them go in reverse: chord({Qt::Key_Super_L,
    /// Qt::Key_Shift, Qt::Key_9}).
    void chord(const QList<Qt::Key>& keys);
    void tap(Qt::Key key) { chord({key}); }
    /// Types plain lower-case ASCII letters, digits and spaces.
    void type(std::string_view letters);

    virtual void moveTo(QPoint pixel) = 0;
    virtual void press(Button button) = 0;
    virtual void release(Button button) = 0;
    void click(QPoint pixel, Button button = Button::left);
    /// As fast as a hand can. A window manager looks at every click on a managed window first, and
    /// two in the same moment are one too many for it.
    void doubleClick(QPoint pixel);
    /// Presses at `from`, goes to `to` in `steps` moves and lets go.
    void drag(QPoint from, QPoint to, int steps = 12);
    /// The moves of a drag without press and release, starting wherever the pointer is.
    void glideTo(QPoint to, int steps = 12);
    [[nodiscard]] virtual QPoint pointer() const = 0;
    /// Lets go all keys and buttons that are down, and waits until that has been taken.
    virtual void letGo() = 0;

    // For whoever holds a stopwatch.
    /// From now on presses, releases and moves are sent without waiting; their order stays.
    virtual void hurry() = 0;
    /// Waits until everything sent so far has been taken.
    virtual void awaitTaken() = 0;
    /// The moment just before the last event was sent.
    [[nodiscard]] virtual std::chrono::steady_clock::time_point lastSent() const = 0;

private:
    void glide(QPoint from, QPoint to, int steps);
};

} // namespace brindlecam::desktop
