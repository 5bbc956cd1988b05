#pragma once

#include "base/ScreenInfo.h"
#include "capture/ScreenGrabber.h"
#include "pictures/Rendered.h"

#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class Alerts;
class Output;
class Prefs;
class Toast;

/// What becomes of what a capture has yielded: which of clipboard, captures folder and history it
/// reaches, and what the user is told. Borrows all it works with; main thread.
class CaptureResults final {
public:
    CaptureResults(const Prefs& prefs, Output& output, Toast& toast, Alerts& alerts);

    /// An area the user has taken; the toast appears on `screen`.
    void area(const Rendered& picture, const std::optional<ScreenInfo>& screen);
    /// A whole screen; the toast appears on it.
    void fullScreen(const Shot& shot);
    /// Recognised text.
    void text(const QString& recognised, const std::optional<ScreenInfo>& screen);
    /// A picture that goes on as a pin.
    void pinned(const Rendered& picture);
    /// The picture of a pin, once more: clipboard only; `done` runs when it is there.
    void copied(const Rendered& picture, std::function<void()> done);
    /// The selection as it is now, while the session goes on: clipboard only, nothing is told.
    void live(const Rendered& picture);
    /// A picture that was on the clipboard only.
    void keep(const Rendered& picture);
    /// Asks where the picture is to be saved and writes it there; `closed` runs when the panel has
    /// closed either way.
    void save(const Rendered& picture, std::function<void()> closed = {});

    /// The session is over: its last clipboard picture need not be remembered any more.
    void sessionEnded();

private:
    [[nodiscard]] QString pathInFolder() const;

    const Prefs& m_prefs;
    Output& m_output;
    Toast& m_toast;
    Alerts& m_alerts;
};

} // namespace brindlecam
