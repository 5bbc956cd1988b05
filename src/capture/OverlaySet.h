#pragma once

#include "base/ScreenInfo.h"
#include "canvas/OverlayWindow.h"

#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

class CanvasView;
class Panels;
class Prefs;
class TextRecognizer;
struct GrabbedScreen;

/// The overlay windows, one per screen, kept hidden between sessions so that opening one is only a
/// map. Main thread.
class OverlaySet final {
public:
    /// All of it outlives this.
    OverlaySet(Panels& panels, Prefs& prefs, TextRecognizer& recognizer);
    ~OverlaySet();

    /// Makes the windows for these screens, and drops those of screens that are gone or changed.
    void prepare(const std::vector<ScreenInfo>& screens);

    /// The window for this shot's screen, filled and part of the session, still hidden.
    OverlayWindow& fill(const GrabbedScreen& shot);

    /// Windows of the present session in the order they were filled; empty when idle.
    [[nodiscard]] const std::vector<OverlayWindow*>& session() const { return m_session; }

    /// The canvas of the session with the selection or the marks; null when there is none.
    [[nodiscard]] CanvasView* canvasInUse() const;
    /// Whether a press on this canvas would lose no marks on another one. Text that is being typed
    /// there becomes a mark.
    [[nodiscard]] bool mayBeginSelectionOn(const CanvasView* canvas) const;

    /// Where the selection is; without one, where the keyboard is. None when idle.
    [[nodiscard]] std::optional<ScreenInfo> screenInUse() const;
    /// Gives the keyboard to the overlay under the pointer (native pixels), else to the first.
    void focus(std::optional<QPoint> pointer);

    /// Takes one window out of the session and off the screen.
    void remove(OverlayWindow& window);
    /// Ends the session: every window off the screen.
    void removeAll();

private:
    OverlayWindow& windowFor(const ScreenInfo& screen);

    Panels& m_panels;
    Prefs& m_prefs;
    TextRecognizer& m_recognizer;
    std::vector<std::unique_ptr<OverlayWindow>> m_windows;
    std::vector<OverlayWindow*> m_session;
};

} // namespace brindlecam
