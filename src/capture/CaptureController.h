#pragma once

#include "base/ScreenInfo.h"
#include "canvas/Outcome.h"
#include "capture/CaptureFailure.h"
#include "capture/LongCaptures.h"
#include "capture/OverlaySet.h"
#include "capture/ScreenGrabber.h"
#include "platform/HotKeys.h"

#include <QObject>
#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace brindlecam {

class Activity;
class Alerts;
class CanvasView;
class CaptureResults;
class Countdown;
class PinnedCaptures;
class Prefs;
class SavePanel;
class ScreenCover;
class Toast;
struct Platform;

/// Runs one capture from trigger to result: freezes the screens, opens the overlays, acts on the
/// outcome. One at a time; a start while another runs is dropped. Main thread.
class CaptureController final : public QObject {
    Q_OBJECT

public:
    /// What the controller works with; all of it outlives the controller.
    struct Services {
        Platform& platform;
        Prefs& prefs;
        CaptureResults& results;
        Toast& toast;
        Alerts& alerts;
        Activity& activity;
        CaptureFailure& failure;
        Countdown& countdown;
        PinnedCaptures& pins;
        LongCaptures& longCaptures;
        ScreenCover& cover;
        /// How long a screen that is being grabbed keeps the program from ending.
        std::chrono::milliseconds lastPatience{5000};
    };

    explicit CaptureController(const Services& services);
    ~CaptureController() override;

    /// Makes windows ready for the first capture.
    void warmUp();

    /// Starts an area capture.
    void begin();
    /// Captures the screen under the pointer.
    void captureFullScreen();
    /// Ends the area capture; harmless when none runs.
    void finish(const Outcome& outcome);
    /// For the program's end: an area capture ends as by Esc, and a screen that is being grabbed
    /// still goes its way, for as long as a user would wait. `done` runs when nothing more will be
    /// delivered, perhaps at once; a save panel is not waited for.
    void wrapUp(std::function<void()> done);

    [[nodiscard]] bool busy() const { return !std::holds_alternative<Idle>(m_state); }

private:
    struct Idle {};
    enum class Kind { area, fullScreen };
    /// From the trigger until the pictures are there.
    struct Grabbing {
        Kind kind = Kind::area;
        std::unique_ptr<QObject> context; ///< whoever still has to answer is called off with it
        enum class Awaits { pictures, input } awaits = Awaits::pictures;
        std::unique_ptr<TakenKey> escapeKey{}; ///< only while pictures keep us waiting
        std::vector<ScreenInfo> screens{};
        std::vector<QRect> windowFrames{}; ///< native pixels, frontmost first
        bool again = false;                ///< the displays changed once already
    };
    /// Overlays are up.
    struct Overlay {
        std::unique_ptr<TakenKey> escapeKey;
        std::optional<Rendered> lastAutoCopied;
    };
    /// The overlays are gone, the outcome is being acted on.
    struct Delivering {
        QPointer<SavePanel> savePanel; ///< open until the state is left
    };
    using State = std::variant<Idle, Grabbing, Overlay, Delivering>;

    [[nodiscard]] bool mayStart() const;
    /// A start was refused. A save panel may be the reason, and may be out of sight.
    void bringSavePanelForward();
    /// Of these screens, or for an area of all that there are when it comes to that.
    void start(Kind kind, std::vector<ScreenInfo> screens = {});
    void grab();
    void grabAll();
    void grabOne();
    /// If the pictures are not there by now, Escape calls the capture off until they are.
    void waitForPictures();
    void callOff();
    void freeInput(const std::vector<Shot>& shots);
    void present(const std::vector<Shot>& shots);
    void wire(OverlayWindow& window);
    void escapePressed();
    void screensChanged();
    /// Ends it, and tells why unless the program ends.
    void fail(const std::function<void()>& tell);
    void handleCaptureFailure(const Error& error);
    void handleTakenInput();
    void act(const Outcome& outcome, const std::optional<Rendered>& lastAutoCopied,
             const std::optional<ScreenInfo>& screen);
    void startLater(LongCapture kind, const QRect& nativeRect);
    void end();

    Services m_services;
    OverlaySet m_overlays;
    State m_state;
    std::function<void()> m_wrappedUp; ///< set while the program ends
};

} // namespace brindlecam
