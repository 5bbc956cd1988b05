#pragma once

#include "base/ScreenInfo.h"

#include <QString>

#include <memory>
#include <optional>

namespace brindlecam {

class Compositing;
class Displays;
class Panels;
class ToastPanel;

/// Short confirmations near the bottom of a screen: about a second, no focus, no mouse. A new one
/// replaces the current one at once. Main thread.
class Toast final {
public:
    Toast(Displays& displays, Panels& panels, Compositing& compositing);
    ~Toast();

    /// Shows `text` on a screen; without one, on the primary screen. Nothing happens without any.
    void show(const QString& text, const std::optional<ScreenInfo>& screen = std::nullopt);

    /// Takes the current toast off the screen without a fade and holds later ones back: nothing of
    /// ours may lie over a frozen screen or in its picture.
    void suspend();
    /// Shows the last of those that were held back.
    void resume();

    /// Whether a toast is on a screen, fading included.
    [[nodiscard]] bool visible() const { return m_current != nullptr; }

private:
    struct Held {
        QString text;
        ScreenInfo screen;
    };

    Displays& m_displays;
    Panels& m_panels;
    Compositing& m_compositing;
    std::unique_ptr<ToastPanel> m_current;
    bool m_suspended = false;
    std::optional<Held> m_held;
};

} // namespace brindlecam
