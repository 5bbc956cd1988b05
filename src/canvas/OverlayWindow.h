#pragma once

#include "base/ScreenInfo.h"
#include "canvas/HintPicture.h"

#include <QWidget>

#include <functional>

namespace brindlecam {

class CanvasView;
class Panels;
class Prefs;
class TextRecognizer;
struct GrabbedScreen;

/// The opaque window over one screen during a session. It is made before it is needed and kept
/// hidden between sessions; its content lives for one session.
class OverlayWindow final : public QWidget {
    Q_OBJECT

public:
    OverlayWindow(Panels& panels, Prefs& prefs, TextRecognizer& recognizer,
                  const ScreenInfo& screen);

    /// The screen this window covers.
    [[nodiscard]] const ScreenInfo& coveredScreen() const { return m_screen; }

    /// Fills the window with the frozen screen and a fresh canvas over it, which it owns.
    CanvasView& makeContent(const GrabbedScreen& shot);
    /// The canvas of the present session, or null.
    [[nodiscard]] CanvasView* canvas() const { return m_canvas; }

    /// Covers the screen.
    void cover();
    /// Leaves the screen and drops the content with its pictures.
    void uncover();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Panels& m_panels;
    Prefs& m_prefs;
    TextRecognizer& m_recognizer;
    const ScreenInfo m_screen;
    const HintPicture m_hint;
    CanvasView* m_canvas = nullptr; ///< child of this window
};

} // namespace brindlecam
