#pragma once

#include "preferences/Config.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace brindlecam {

class Compositing;
class Displays;
class FloatingPanel;
class Panels;

/// Counts down on the screen with the pointer, then acts. One at a time: a second one replaces the
/// first, whose action is dropped. Main thread.
class Countdown final {
public:
    struct Timing {
        std::chrono::milliseconds tick = Config::countdownTick;
        std::chrono::milliseconds handOff = Config::countdownHandOff;
    };

    Countdown(Displays& displays, Panels& panels, Compositing& compositing, Timing timing);
    Countdown(Displays& displays, Panels& panels, Compositing& compositing);
    ~Countdown();

    /// Shows `seconds` and counts; `action` runs when the panel is off the screen, or at once when
    /// there is no screen to count on.
    void run(int seconds, std::function<void()> action);

    /// Ends a running countdown without its action. Says whether there was one: its digit may be
    /// on the screen for some milliseconds yet.
    bool cancel();

    /// Whole seconds still to go; 0 when none is counted.
    [[nodiscard]] int remaining() const { return m_panel ? m_remaining : 0; }

private:
    void tick();

    Displays& m_displays;
    Panels& m_panels;
    Compositing& m_compositing;
    const Timing m_timing;
    int m_remaining = 0;
    std::function<void()> m_action;
    QTimer m_ticks;
    QTimer m_handOff;
    std::unique_ptr<FloatingPanel> m_panel;
};

} // namespace brindlecam
