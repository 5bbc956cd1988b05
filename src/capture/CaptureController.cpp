#include "capture/CaptureController.h"

#include "app/Activity.h"
#include "app/Alerts.h"
#include "app/Prefs.h"
#include "app/Toast.h"
#include "base/KeyCodes.h"
#include "canvas/CanvasView.h"
#include "capture/Output.h"
#include "capture/ResultToast.h"
#include "capture/SavePanel.h"
#include "capture/WindowFinder.h"
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QDir>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace brindlecam {

namespace {

// What the desktop gets to repaint the places that our own windows covered until now.
constexpr std::chrono::milliseconds kDesktopRepaint{50};
// From the end of the session to a long capture: the overlays must be off the screen.
constexpr std::chrono::milliseconds kLongCaptureDelay{250};

template <typename... Branches>
struct Overloaded : Branches... {
    using Branches::operator()...;
};
template <typename... Branches>
Overloaded(Branches...) -> Overloaded<Branches...>;

bool sameDisplays(const std::vector<ScreenInfo>& a, const std::vector<ScreenInfo>& b)
{
    return std::ranges::equal(a, b, &ScreenInfo::sameDisplay);
}

QString pathInFolder(const Prefs& prefs)
{
    return QDir(prefs.saveFolder()).filePath(Prefs::newFileName());
}

} // namespace

CaptureController::CaptureController(const Services& services)
    : m_services(services)
    , m_overlays(*services.platform.panels, services.prefs)
{
    m_services.platform.displays->setOnChange([this] { screensChanged(); });
}

CaptureController::~CaptureController()
{
    m_services.platform.displays->setOnChange({});
}

void CaptureController::warmUp()
{
    const auto screens = m_services.platform.displays->screens();
    m_services.platform.grabber->warmUp(screens);
    m_overlays.prepare(screens);
}

bool CaptureController::mayStart() const
{
    return !busy() && !m_services.activity.any();
}

void CaptureController::start(std::function<void()> grab)
{
    m_services.activity.capture = true;
    m_state = Grabbing{};
    const bool covered = m_services.toast.visible() || m_services.alerts.visible();
    m_services.toast.dismiss();
    m_services.alerts.suspend();
    if (covered)
        QTimer::singleShot(kDesktopRepaint, this, std::move(grab));
    else
        grab();
}

void CaptureController::begin()
{
    if (!mayStart())
        return;
    m_services.platform.frontApplication->remember();
    start([this] { grabAll(); });
}

void CaptureController::grabAll()
{
    auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (!grabbing)
        return;
    Platform& platform = m_services.platform;
    grabbing->screens = platform.displays->screens();
    grabbing->windowFrames = WindowFinder::frontToBackRects(
        platform.windowList->frontToBack(), grabbing->screens, QCoreApplication::applicationPid());
    ScreenGrabber::capture(*platform.grabber, grabbing->screens, {.dimmedCopy = true},
                           [this](Result<std::vector<Shot>> grabbed) {
                               if (grabbed)
                                   present(grabbed.value());
                               else
                                   handleCaptureFailure(grabbed.error());
                           });
}

void CaptureController::present(const std::vector<Shot>& shots)
{
    auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (!grabbing)
        return;
    // Pictures of a desktop that has changed meanwhile fit no screen any more.
    if (!grabbing->again &&
        !sameDisplays(m_services.platform.displays->screens(), grabbing->screens)) {
        grabbing->again = true;
        grabAll();
        return;
    }
    const std::vector<QRect> frames = std::move(grabbing->windowFrames);
    m_state = Overlay{};
    for (const Shot& shot : shots) {
        OverlayWindow& window = m_overlays.fill(shot);
        window.canvas()->setWindowRects(WindowFinder::onScreen(frames, shot.screen));
        wire(window);
        window.cover();
    }
    focusOverlayUnderPointer();
    std::get<Overlay>(m_state).escapeKey = m_services.platform.hotKeys->registerKey(
        KeyCodes::kEscape, 0, [this] { finish(outcome::Cancel{}); });
}

void CaptureController::wire(OverlayWindow& window)
{
    CanvasView* canvas = window.canvas();
    canvas->onBeginSelection = [this, canvas] {
        for (OverlayWindow* other : m_overlays.session()) {
            if (other->canvas() != canvas)
                other->canvas()->clearSelection();
        }
    };
    canvas->onFinish = [this](const Outcome& outcome) { finish(outcome); };
    canvas->onAutoCopy = [this](const Rendered& picture) {
        auto* overlay = std::get_if<Overlay>(&m_state);
        if (!overlay)
            return;
        overlay->lastAutoCopied = picture;
        m_services.output.deliver(picture, {.copy = true});
    };
}

void CaptureController::focusOverlayUnderPointer()
{
    const auto& session = m_overlays.session();
    if (session.empty())
        return;
    const auto pointer = m_services.platform.displays->pointer();
    const auto found = std::ranges::find_if(session, [&](const OverlayWindow* window) {
        return pointer && window->coveredScreen().native.contains(*pointer);
    });
    OverlayWindow& chosen = found == session.end() ? *session.front() : **found;
    m_services.platform.panels->focus(chosen);
    chosen.canvas()->setFocus();
}

std::optional<ScreenInfo> CaptureController::sessionScreen() const
{
    const auto& session = m_overlays.session();
    if (session.empty())
        return std::nullopt;
    auto found = std::ranges::find_if(session, [](const OverlayWindow* window) {
        return !window->canvas()->selection().isEmpty();
    });
    if (found == session.end())
        found = std::ranges::find_if(session, &OverlayWindow::isActiveWindow);
    return (found == session.end() ? session.front() : *found)->coveredScreen();
}

void CaptureController::finish(const Outcome& outcome)
{
    auto* overlay = std::get_if<Overlay>(&m_state);
    if (!overlay)
        return;
    const Outcome kept = outcome; // the canvas that reports it is about to go
    const std::optional<ScreenInfo> screen = sessionScreen();
    const std::optional<Rendered> lastAutoCopied = std::move(overlay->lastAutoCopied);
    const bool saves = std::holds_alternative<outcome::Save>(kept);
    if (!saves)
        m_services.platform.frontApplication->giveBack();
    m_overlays.removeAll();
    m_state = Delivering{};

    Output& output = m_services.output;
    std::visit(Overloaded{
                   [&](const outcome::Copy& copy) { deliverArea(copy.picture, screen); },
                   [&](const outcome::Save& saving) {
                       output.deliver(saving.picture, {.copy = false, .history = true});
                       m_services.alerts.resume(); // the panel is one of them
                       save(saving.picture, [this] {
                           m_services.platform.frontApplication->giveBack();
                           end();
                       });
                   },
                   [&](const outcome::Text& recognised) {
                       m_services.platform.pasteboard->setText(recognised.text);
                       m_services.toast.show(ResultToast::textMessage(recognised.text), screen);
                   },
                   [&](const outcome::Pin& pin) {
                       output.deliver(pin.picture, {.copy = true, .history = true});
                       if (onPin)
                           onPin(pin.picture, pin.frame);
                   },
                   [&](const outcome::Scroll& scroll) { startLater(onScroll, scroll.rect); },
                   [&](const outcome::Gif& gif) { startLater(onGif, gif.rect); },
                   [&](outcome::Cancel) {
                       if (lastAutoCopied)
                           output.deliver(*lastAutoCopied, {.copy = false, .history = true});
                   },
               },
               kept);
    output.forgetLastCopy();
    if (!saves)
        end();
}

void CaptureController::end()
{
    m_state = Idle{};
    m_services.activity.capture = false;
    m_services.alerts.resume();
}

void CaptureController::deliverArea(const Rendered& picture,
                                    const std::optional<ScreenInfo>& screen)
{
    const QString saveTo =
        m_services.prefs.autoSaveArea() ? pathInFolder(m_services.prefs) : QString();
    m_services.output.deliver(
        picture, {.copy = true, .saveTo = saveTo, .history = true},
        [this, screen, requested = !saveTo.isEmpty()](bool saved) {
            m_services.toast.show(ResultToast::message(ResultToast::Kind::area,
                                                       {.requested = requested, .saved = saved}),
                                  screen);
        });
}

void CaptureController::save(const Rendered& picture, std::function<void()> closed)
{
    SavePanel::open(m_services.alerts, m_services.prefs.saveFolder(), Prefs::newFileName(),
                    [this, picture, closed = std::move(closed)](std::optional<QString> path) {
                        if (path)
                            m_services.output.writeFile(picture, *path);
                        if (closed)
                            closed();
                    });
}

void CaptureController::startLater(
    const std::function<void(const QRect&, const ScreenInfo&)>& start, const QRect& nativeRect)
{
    const auto screens = m_services.platform.displays->screens();
    const auto screen = std::ranges::find_if(screens, [&](const ScreenInfo& candidate) {
        return candidate.native.intersects(nativeRect);
    });
    if (!start || screen == screens.end())
        return;
    QTimer::singleShot(kLongCaptureDelay, this,
                       [start, nativeRect, screen = *screen] { start(nativeRect, screen); });
}

std::optional<ScreenInfo> CaptureController::screenUnderPointer() const
{
    const auto screens = m_services.platform.displays->screens();
    if (screens.empty())
        return std::nullopt;
    const auto pointer = m_services.platform.displays->pointer();
    const auto found = std::ranges::find_if(screens, [&](const ScreenInfo& screen) {
        return pointer && screen.native.contains(*pointer);
    });
    return found == screens.end() ? screens.front() : *found;
}

void CaptureController::captureFullScreen()
{
    if (!mayStart())
        return;
    const auto screen = screenUnderPointer();
    if (!screen)
        return;
    start([this, screen = *screen] { grabOne(screen); });
}

void CaptureController::grabOne(const ScreenInfo& screen)
{
    ScreenGrabber::capture(*m_services.platform.grabber, {screen}, {},
                           [this](Result<std::vector<Shot>> grabbed) {
                               if (grabbed)
                                   deliverFullScreen(grabbed.value().front());
                               else
                                   handleCaptureFailure(grabbed.error());
                           });
}

void CaptureController::deliverFullScreen(const Shot& shot)
{
    const QString saveTo =
        m_services.prefs.autoSaveFullScreen() ? pathInFolder(m_services.prefs) : QString();
    m_services.output.deliver(
        {.image = shot.image, .pointSize = shot.screen.size()},
        {.copy = true, .saveTo = saveTo, .history = true},
        [this, screen = shot.screen, requested = !saveTo.isEmpty()](bool saved) {
            m_services.toast.show(ResultToast::message(ResultToast::Kind::fullScreen,
                                                       {.requested = requested, .saved = saved}),
                                  screen);
        });
    m_services.output.forgetLastCopy();
    end();
}

void CaptureController::handleCaptureFailure(const Error& error)
{
    end();
    m_services.failure.handle(error);
}

void CaptureController::screensChanged()
{
    const auto screens = m_services.platform.displays->screens();
    if (std::holds_alternative<Overlay>(m_state)) {
        bool held = false;
        for (OverlayWindow* window : std::vector(m_overlays.session())) {
            if (std::ranges::any_of(screens, [&](const ScreenInfo& screen) {
                    return screen.sameDisplay(window->coveredScreen());
                }))
                continue;
            held = held || !window->canvas()->selection().isEmpty();
            if (!held)
                m_overlays.remove(*window);
        }
        if (held || m_overlays.session().empty())
            finish(outcome::Cancel{});
    }
    m_overlays.prepare(screens);
}

} // namespace brindlecam
