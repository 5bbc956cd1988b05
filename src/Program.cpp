#include "Program.h"

#include "base/WorkPool.h"
#include "platform/Platform.h"

#include <QEventLoop>
#include <QThreadPool>

#include <chrono>
#include <utility>

namespace brindlecam {

namespace {

// Idle threads of Qt's pool wake once, to end; soon after they have painted, not half a minute
// later.
constexpr std::chrono::milliseconds kIdleThreadLife{2000};

} // namespace

Program::Program(Platform& platform, CaptureFailure::Voice voice, SingleInstance& instance,
                 const std::optional<QUrl>& feed)
    : m_defaults(Defaults::standardFile())
    , m_prefs(m_defaults)
    , m_alerts(*platform.panels)
    , m_toast(*platform.displays, *platform.panels, *platform.compositing)
    , m_history({History::standardFolder(), ThumbnailCache::standardFolder()})
    , m_output(*platform.pasteboard, m_history, m_prefs, WorkPool::run)
    , m_captureFailure(*platform.captureAccess, m_alerts, m_defaults, voice)
    , m_captureResults(m_prefs, m_output, m_toast, m_alerts)
    , m_countdown(*platform.displays, *platform.panels, *platform.compositing)
    , m_pinnedCaptures(
          {*platform.panels, *platform.pins, *platform.displays, *platform.compositing}, m_toast,
          m_activity, m_captureResults)
    , m_longCaptures({platform, m_captureResults, m_toast, m_alerts, m_activity})
    , m_drawer(
          {platform, m_prefs, m_history, m_output, m_toast, m_alerts, m_activity, WorkPool::run})
    , m_captureController({platform, m_prefs, m_captureResults, m_toast, m_alerts, m_activity,
                           m_captureFailure, m_countdown, m_pinnedCaptures, m_longCaptures,
                           m_drawer})
    , m_feed(FeedProcess::standardProgram(), feed,
             QStringLiteral("Brindlecam/") + Updater::installedVersion())
    , m_updater({m_prefs, m_alerts, *platform.fileOpener, m_activity, m_feed})
    , m_delegate({platform, m_prefs, m_alerts, m_toast, m_activity, m_history, m_output,
                  m_countdown, m_longCaptures, m_captureController, m_drawer, m_updater, instance,
                  WorkPool::run})
{
    QThreadPool::globalInstance()->setExpiryTimeout(static_cast<int>(kIdleThreadLife.count()));
}

Program::~Program()
{
    // The session's end leaves the main loop without asking; nothing is lost then either.
    m_delegate.quit();
    QEventLoop loop;
    while (m_activity.stage != Activity::Stage::left)
        loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace brindlecam
