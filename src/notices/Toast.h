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

/// Short messages near the bottom of a screen: about a second, unless they stay; no focus, no
/// mouse. A new one replaces the current one at once. Main thread.
class Toast final {
public:
    Toast(Displays& displays, Panels& panels, Compositing& compositing);
    ~Toast();

    enum class Stays {
        aMoment,
        untilEnded, ///< by endLasting(), or by another toast
    };

    /// Shows `text` on a screen; without one, on the primary screen. Nothing happens without any.
    void show(const QString& text, const std::optional<ScreenInfo>& screen = std::nullopt,
              Stays stays = Stays::aMoment);
    /// Ends a toast that stays, if that is the current one or held back.
    void endLasting();

    /// Takes the current toast off the screen without a fade and holds later ones back, and one
    /// that stays: nothing of ours may lie over a frozen screen or in its picture.
    void suspend();
    /// Shows the last of those that were held back.
    void resume();

    /// Whether a toast is on a screen, fading included.
    [[nodiscard]] bool visible() const { return m_current != nullptr; }

private:
    struct Held {
        QString text;
        ScreenInfo screen;
        Stays stays = Stays::aMoment;
    };

    [[nodiscard]] static bool lasts(const std::optional<Held>& what);

    Displays& m_displays;
    Panels& m_panels;
    Compositing& m_compositing;
    std::unique_ptr<ToastPanel> m_current;
    std::optional<Held> m_shown; ///< what m_current shows
    bool m_suspended = false;
    std::optional<Held> m_held;
};

} // namespace brindlecam
