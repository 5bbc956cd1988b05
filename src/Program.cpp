#include "Program.h"

#include "base/UnfinishedFiles.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QThreadPool>

#include <chrono>
#include <utility>

namespace brindlecam {

namespace {

// Idle threads of the pool wake once, to end; soon after the work, not half a minute later.
constexpr std::chrono::milliseconds kIdleThreadLife{2000};

void runInPool(std::function<void()> work)
{
    QThreadPool::globalInstance()->start(std::move(work));
}

} // namespace

Program::Program(Platform platform, CaptureFailure::Voice voice)
    : m_platform(std::move(platform))
    , m_defaults(Defaults::standardFile())
    , m_prefs(m_defaults)
    , m_alerts(*m_platform.panels)
    , m_toast(*m_platform.displays, *m_platform.panels)
    , m_delegate(m_prefs, m_alerts, m_toast, *m_platform.fileOpener)
    , m_hotKeyCenter(*m_platform.hotKeys, m_prefs)
    , m_hostedMenu(m_prefs, m_platform.keyNaming)
    , m_ownMenu(m_prefs, m_platform.keyNaming)
    , m_history(History::standardFolder())
    , m_output(*m_platform.pasteboard, m_history, m_prefs, runInPool)
    , m_captureFailure(*m_platform.captureAccess, m_alerts, m_defaults, voice)
    , m_captureResults(m_prefs, m_output, m_toast, m_alerts)
    , m_countdown(*m_platform.displays, *m_platform.panels)
    , m_captureController({m_platform, m_prefs, m_captureResults, m_toast, m_alerts, m_activity,
                           m_captureFailure, m_countdown})
    , m_pinnedCaptures(*m_platform.panels, *m_platform.displays, m_toast)
{
    QThreadPool::globalInstance()->setExpiryTimeout(static_cast<int>(kIdleThreadLife.count()));
    wireCapture();
    wirePins();
    wireApp();
}

Program::~Program()
{
    // The session's end leaves the main loop without asking; nothing is lost then either.
    quit();
    QEventLoop loop;
    while (m_stage != Stage::left)
        loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

void Program::start(std::optional<CaptureAction> action)
{
    m_platform.quitSignals->whenAsked(&m_context, [this] { quit(); });
    m_statusItem.emplace(*m_platform.trayHosts, m_hostedMenu, m_ownMenu);
    m_hotKeyCenter.reload();
    if (action)
        m_delegate.perform(*action);
    else
        m_captureController.warmUp();
    m_delegate.showWelcomeIfFirstRun();
    tidyFolders();
}

void Program::tidyFolders() const
{
    // A disk may take longer than this object lives: only values go along.
    runInPool([history = m_history.folder(), captures = m_prefs.saveFolder(),
               settings = m_defaults.folder()] {
        History(history).tidy();
        const QDateTime now = QDateTime::currentDateTime();
        UnfinishedFiles::removeAbandoned(captures, now);
        UnfinishedFiles::removeAbandoned(settings, now);
    });
}

void Program::quit()
{
    if (m_stage != Stage::running)
        return;
    m_stage = Stage::quitting;
    // From here on nothing new begins, whoever asks.
    if (onQuitting)
        onQuitting();
    m_hotKeyCenter.releaseAll();
    m_countdown.cancel();
    m_delegate.onArea = {};
    m_delegate.onFullScreen = {};
    m_delegate.onCountdown = {};
    m_pinnedCaptures.onCopy = {};
    m_pinnedCaptures.onSave = {};
    m_statusItem.reset();
    m_captureController.wrapUp([this] { leave(); });
}

void Program::leave()
{
    m_output.finishAll([this] {
        m_platform.pasteboard->handOver(&m_context, [this] {
            m_stage = Stage::left;
            QCoreApplication::quit();
        });
    });
}

} // namespace brindlecam
