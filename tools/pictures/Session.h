#pragma once

#include "ToldRecognizer.h"
#include "capture/OverlaySet.h"

namespace brindlecam {

class CanvasView;
class Prefs;

namespace pictures {

class Photographer;

/// A session on the frozen screens, as fresh as the controller's, with the focus and without the
/// controller. It lasts as long as this; main thread.
class Session final {
public:
    Session(Photographer& photographer, Prefs& prefs);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The canvas of the primary screen.
    [[nodiscard]] CanvasView& canvas() { return *m_overlays.session().front()->canvas(); }

    /// What the text of a selection is, from now on; before, reading never ends.
    void setText(Result<QStringList> lines) { m_recognizer.answer = std::move(lines); }

private:
    ToldRecognizer m_recognizer;
    OverlaySet m_overlays;
};

} // namespace pictures

} // namespace brindlecam
