#pragma once

#include "base/ScreenInfo.h"
#include "capture/ResultToast.h"
#include "capture/ScreenGrabber.h"
#include "pictures/Rendered.h"
#include "pins/PinDelivery.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

class Alerts;
class Output;
class Prefs;
class SavePanel;
class Toast;

/// What becomes of what a capture has yielded: which of clipboard, captures folder and history it
/// reaches, and what the user is told. Borrows all it works with; main thread.
class CaptureResults final : public PinDelivery {
public:
    CaptureResults(const Prefs& prefs, Output& output, Toast& toast, Alerts& alerts);

    /// An area the user has taken; the toast appears on `screen`.
    void area(const Rendered& picture, const std::optional<ScreenInfo>& screen);
    /// A scrolled page. Encoding it may take so long that the user is told.
    void page(const Rendered& picture, const std::optional<ScreenInfo>& screen);
    /// A whole screen; the toast appears on it.
    void fullScreen(const Shot& shot);
    /// Recognised text.
    void text(const QString& recognised, const std::optional<ScreenInfo>& screen);
    /// A picture that goes on as a pin; nothing is told unless it could not be copied.
    void pinned(const Rendered& picture, const std::optional<ScreenInfo>& screen);
    /// The selection as it is now, while the session goes on: clipboard only, nothing is told yet.
    void live(const Rendered& picture);
    /// A picture that was to be on the clipboard only; tells if live() has not brought it there.
    void keep(const Rendered& picture, const std::optional<ScreenInfo>& screen);
    /// Asks where the picture is to be saved and writes it there; `closed` runs when the panel has
    /// closed either way. What could not be written is told. The panel answered deletes itself when
    /// it has closed.
    SavePanel* save(const Rendered& picture, std::function<void()> closed = {});

    /// Clipboard only.
    void copyPinned(const Rendered& picture, std::function<void(ClipboardFate)> done) override;
    void savePinned(const Rendered& picture) override;

    /// The session is over: its last clipboard picture need not be remembered any more.
    void sessionEnded();

private:
    using Screen = std::optional<ScreenInfo>;
    /// Who tells the user on that screen. Callbacks hold this instead of us.
    struct Teller {
        Toast& toast;
        Screen screen;

        /// Shows the message, if there is one.
        void tell(const std::optional<QString>& message) const;
    };
    /// What became of the last live copy of a session. Shared with what is still on its way.
    struct LiveCopy {
        bool refused = false;
        std::function<void()> tell; ///< set once the session has ended with it
    };

    [[nodiscard]] QString pathInFolder() const;
    /// Where an area or a page is saved by itself; empty: nowhere.
    [[nodiscard]] QString areaPath() const;
    void deliverCaptured(ResultToast::Kind kind, const Rendered& picture, const QString& saveTo,
                         const Screen& screen);
    [[nodiscard]] Teller teller(const Screen& screen) { return {m_toast, screen}; }

    const Prefs& m_prefs;
    Output& m_output;
    Toast& m_toast;
    Alerts& m_alerts;
    std::shared_ptr<LiveCopy> m_live = std::make_shared<LiveCopy>();
};

} // namespace brindlecam
