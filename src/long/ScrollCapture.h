#pragma once

#include "base/Result.h"
#include "base/ScreenInfo.h"
#include "long/ScrolledPage.h"
#include "long/SessionChrome.h"

#include <QObject>
#include <QRect>

#include <chrono>
#include <memory>
#include <optional>

namespace brindlecam {

class Alerts;
class CaptureResults;
class FrameLoop;
class RegionFrames;
class Toast;

/// Captures a page that is taller than the screen: looks at a rectangle again and again while the
/// user scrolls what lies in it, and stitches what it sees. Main thread; the frames are taken and
/// stitched on a thread of their own.
class ScrollCapture final {
public:
    struct Rooms {
        Platform& platform;
        CaptureResults& results;
        Toast& toast;
        Alerts& alerts;
        Activity& activity;
    };

    /// Between the end of one frame and the next.
    static constexpr std::chrono::milliseconds kPause{70};

    explicit ScrollCapture(const Rooms& rooms);
    /// As cancel().
    ~ScrollCapture();
    ScrollCapture(const ScrollCapture&) = delete;
    ScrollCapture& operator=(const ScrollCapture&) = delete;

    /// Begins with this rectangle (native pixels of the global desktop) on its screen; nothing
    /// happens while a page or a GIF is being captured.
    void start(const QRect& native, const ScreenInfo& screen);
    /// Ends it and delivers the page; nothing happens where no frame was seen yet.
    void finish();
    /// Ends it without a result or a word.
    void cancel();

    [[nodiscard]] bool isRunning() const { return m_session != nullptr; }
    [[nodiscard]] const SessionChrome& chrome() const { return m_chrome; }

private:
    /// What lasts from the start to the end. The page is the loop's as long as that runs.
    struct Session {
        Session(const QRect& rect, const ScreenInfo& where);
        ~Session();

        QRect native;
        ScreenInfo screen;
        QObject context; ///< what comes from elsewhere is dropped with it
        ScrolledPage page;
        std::unique_ptr<FrameLoop> loop; ///< last: it uses the rest
    };
    /// What there is to say after a frame.
    struct Report {
        ScrolledPage::State state;
        int height; ///< of the picture, in pixels
    };

    void opened(Result<std::unique_ptr<RegionFrames>> frames);
    void seen(const Report& report);
    [[nodiscard]] bool screenIsAsBefore() const;
    [[nodiscard]] std::optional<ScreenInfo> screenNow(const ScreenInfo& screen) const;
    void failed();
    void deliver(const Session& ended, const QImage& picture);
    std::unique_ptr<Session> tearDown();

    const Rooms m_rooms;
    SessionChrome m_chrome;
    std::unique_ptr<Session> m_session; ///< null: none runs
    QObject m_context;                  ///< last: the displays tell us no longer than it lives
};

} // namespace brindlecam
