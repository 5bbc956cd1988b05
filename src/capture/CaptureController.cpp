#include "capture/CaptureController.h"

#include "base/Overloaded.h"
#include "base/Text.h"
#include "canvas/CanvasView.h"
#include "capture/CaptureResults.h"
#include "capture/Countdown.h"
#include "capture/SavePanel.h"
#include "capture/ScreenCover.h"
#include "capture/WindowFinder.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/OpenMenus.h"
#include "notices/Toast.h"
#include "pins/PinnedCaptures.h"
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindlecam {

namespace {

// What the desktop gets to repaint the places that our own windows covered until now.
constexpr std::chrono::milliseconds kDesktopRepaint{50};
// From the end of the session to a long capture: the overlays must be off the screen.
constexpr std::chrono::milliseconds kLongCaptureDelay{250};

bool sameDisplays(const std::vector<ScreenInfo>& a, const std::vector<ScreenInfo>& b)
{
    return std::ranges::equal(a, b, &ScreenInfo::sameDisplay);
}

} // namespace

CaptureController::CaptureController(const Services& services)
    : m_services(services)
    , m_overlays(*services.platform.panels, services.prefs, *services.platform.textRecognizer)
{
    m_services.platform.displays->whenChanged(this, [this] { screensChanged(); });
}

CaptureController::~CaptureController() = default;

void CaptureController::warmUp()
{
    m_overlays.prepare(m_services.platform.displays->screens());
}

bool CaptureController::mayStart() const
{
    return !busy() && !m_services.activity.any();
}

void CaptureController::bringSavePanelForward()
{
    const auto* delivering = std::get_if<Delivering>(&m_state);
    if (delivering && delivering->savePanel)
        m_services.alerts.bringForward(*delivering->savePanel);
}

void CaptureController::start(Kind kind, std::vector<ScreenInfo> screens)
{
    m_services.activity.capture = true;
    m_state = Grabbing{
        .kind = kind, .context = std::make_unique<QObject>(), .screens = std::move(screens)};
    QObject* const context = std::get<Grabbing>(m_state).context.get();
    const bool menuWasOpen = OpenMenus::close();
    const bool counted = m_services.countdown.cancel();
    const bool tipWasShown = m_services.pins.hideTip();
    const bool coverLeft = m_services.cover.leave(
        kind == Kind::area ? ScreenCover::Focus::isTaken : ScreenCover::Focus::goesBack);
    const bool covered = menuWasOpen || counted || tipWasShown || coverLeft ||
                         m_services.toast.visible() || m_services.alerts.visible();
    m_services.toast.suspend();
    m_services.alerts.suspend();
    if (covered)
        QTimer::singleShot(kDesktopRepaint, context, [this] { grab(); });
    else
        grab();
}

void CaptureController::grab()
{
    const auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (!grabbing)
        return;
    switch (grabbing->kind) {
    case Kind::area:
        return grabAll();
    case Kind::fullScreen:
        return grabOne();
    }
}

void CaptureController::begin()
{
    if (!mayStart()) {
        bringSavePanelForward();
        return;
    }
    m_services.platform.frontApplication->remember();
    start(Kind::area);
}

void CaptureController::grabAll()
{
    auto& grabbing = std::get<Grabbing>(m_state);
    Platform& platform = m_services.platform;
    grabbing.screens = platform.displays->layout();
    grabbing.windowFrames = WindowFinder::frontToBackRects(
        platform.windowList->frontToBack(), grabbing.screens, QCoreApplication::applicationPid());
    ScreenGrabber::capture(*platform.grabber, grabbing.screens, grabbing.context.get(),
                           [this](Result<std::vector<Shot>> grabbed) {
                               if (grabbed)
                                   freeInput(grabbed.value());
                               else
                                   handleCaptureFailure(grabbed.error());
                           });
    waitForPictures();
}

// Where the system answers within the call, nothing is left to wait for.
void CaptureController::waitForPictures()
{
    auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (grabbing && grabbing->awaits == Grabbing::Awaits::pictures && !grabbing->escapeKey)
        grabbing->escapeKey =
            m_services.platform.hotKeys->takeKey(PlainKey::escape, [this] { callOff(); });
}

void CaptureController::callOff()
{
    const auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (!grabbing)
        return;
    if (grabbing->kind == Kind::area)
        m_services.platform.frontApplication->giveBack();
    end();
}

// Only now that it is in the picture: a menu is often what a delayed capture is for.
void CaptureController::freeInput(const std::vector<Shot>& shots)
{
    auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (!grabbing)
        return;
    // Escape is also what closes another program's menu.
    grabbing->awaits = Grabbing::Awaits::input;
    grabbing->escapeKey.reset();
    QObject* const context = grabbing->context.get();
    m_services.platform.inputGrabs->clear(context, [this, shots](InputGrabs::Answer answer) {
        if (answer == InputGrabs::Answer::free)
            present(shots);
        else
            handleTakenInput();
    });
}

void CaptureController::present(const std::vector<Shot>& shots)
{
    auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (!grabbing)
        return;
    // Pictures of a desktop that has changed meanwhile fit no screen any more.
    if (!grabbing->again &&
        !sameDisplays(m_services.platform.displays->layout(), grabbing->screens)) {
        grabbing->again = true;
        grabbing->awaits = Grabbing::Awaits::pictures;
        grabAll();
        return;
    }
    const std::vector<QRect> frames = std::move(grabbing->windowFrames);
    m_state = Overlay{};
    // First: whoever sees the overlay can leave it.
    std::get<Overlay>(m_state).escapeKey =
        m_services.platform.hotKeys->takeKey(PlainKey::escape, [this] { escapePressed(); });
    for (const Shot& shot : shots) {
        OverlayWindow& window = m_overlays.fill(shot);
        window.canvas()->setWindowRects(WindowFinder::onScreen(frames, shot.screen));
        wire(window);
        window.cover();
    }
    m_overlays.focus(m_services.platform.displays->pointer());
    m_services.platform.textRecognizer->warmUp();
}

void CaptureController::escapePressed()
{
    const auto& session = m_overlays.session();
    if (std::ranges::none_of(session, [](auto* window) { return window->canvas()->stepBack(); }))
        finish(outcome::Cancel{});
}

void CaptureController::wire(OverlayWindow& window)
{
    CanvasView* canvas = window.canvas();
    canvas->onMayBeginSelection = [this, canvas] { return m_overlays.mayBeginSelectionOn(canvas); };
    canvas->onBeginSelection = [this, canvas] {
        for (OverlayWindow* other : m_overlays.session()) {
            if (other->canvas() != canvas)
                other->canvas()->clearSelection();
        }
    };
    // Keys act on the session, whichever overlay has the focus.
    canvas->onCommandElsewhere = [this](const CanvasCommand& command) {
        if (CanvasView* used = m_overlays.canvasInUse())
            used->perform(command);
    };
    canvas->setUnavailable(unavailableActions(m_services.longCaptures));
    canvas->onFinish = [this](const Outcome& outcome) { finish(outcome); };
    canvas->onAutoCopy = [this](const Rendered& picture) {
        auto* overlay = std::get_if<Overlay>(&m_state);
        if (!overlay)
            return;
        overlay->lastAutoCopied = picture;
        m_services.results.live(picture);
    };
}

void CaptureController::finish(const Outcome& outcome)
{
    auto* overlay = std::get_if<Overlay>(&m_state);
    if (!overlay)
        return;
    const Outcome kept = outcome; // the canvas that reports it is about to go
    const std::optional<ScreenInfo> screen = m_overlays.screenInUse();
    const std::optional<Rendered> lastAutoCopied = std::move(overlay->lastAutoCopied);
    const auto* saving = std::get_if<outcome::Save>(&kept);
    const bool copies = std::holds_alternative<outcome::Copy>(kept);
    m_state = Delivering{};
    // Whoever pastes waits for the picture; taking the overlays away takes some milliseconds.
    if (copies)
        act(kept, lastAutoCopied, screen);
    // Before the overlays go, so that the key which ended the session is caught. With a save panel
    // the focus goes back when that closes.
    if (!saving)
        m_services.platform.frontApplication->giveBack();
    m_services.platform.panels->swallowDoubleClick();
    m_overlays.removeAll();
    if (!copies)
        act(kept, lastAutoCopied, screen);
    m_services.results.sessionEnded();
    if (!saving) {
        end();
        return;
    }
    m_services.alerts.resume(); // the panel is one of them
    SavePanel* panel = m_services.results.save(saving->picture, [this] {
        m_services.platform.frontApplication->giveBack();
        end();
    });
    std::get<Delivering>(m_state).savePanel = panel;
}

void CaptureController::wrapUp(std::function<void()> done)
{
    // What a session has copied so far belongs into the history.
    finish(outcome::Cancel{});
    const auto* grabbing = std::get_if<Grabbing>(&m_state);
    if (grabbing && grabbing->kind == Kind::fullScreen) {
        m_wrappedUp = std::move(done);
        QTimer::singleShot(m_services.lastPatience, grabbing->context.get(), [this] { callOff(); });
        return;
    }
    callOff(); // what the user was to select from, nobody will
    done();
}

void CaptureController::act(const Outcome& outcome, const std::optional<Rendered>& lastAutoCopied,
                            const std::optional<ScreenInfo>& screen)
{
    CaptureResults& results = m_services.results;
    std::visit(
        Overloaded{
            [&](const outcome::Copy& copy) { results.area(copy.picture, screen); },
            [&](const outcome::Save& save) { results.keep(save.picture, screen); },
            [&](const outcome::Text& recognised) { results.text(recognised.text, screen); },
            [&](const outcome::Pin& pin) {
                results.pinned(pin.picture, screen);
                m_services.pins.pin(pin.picture, pin.frame);
            },
            [&](const outcome::Scroll& scroll) { startLater(LongCapture::scroll, scroll.rect); },
            [&](const outcome::Gif& gif) { startLater(LongCapture::gif, gif.rect); },
            [&](outcome::Cancel) {
                if (lastAutoCopied)
                    results.keep(*lastAutoCopied, screen);
            },
        },
        outcome);
}

void CaptureController::end()
{
    m_state = Idle{};
    m_services.activity.capture = false;
    m_services.toast.resume();
    m_services.alerts.resume();
    if (const auto wrappedUp = std::exchange(m_wrappedUp, {}))
        wrappedUp();
}

void CaptureController::startLater(LongCapture kind, const QRect& nativeRect)
{
    const auto screens = m_services.platform.displays->screens();
    const auto screen = std::ranges::find_if(screens, [&](const ScreenInfo& candidate) {
        return candidate.native.intersects(nativeRect);
    });
    if (screen == screens.end() || !m_services.longCaptures.available(kind))
        return;
    QTimer::singleShot(kLongCaptureDelay, this, [this, kind, nativeRect, screen = *screen] {
        if (!mayStart() || m_services.activity.quitting()) // something may have come in between
            return;
        m_services.cover.leave(ScreenCover::Focus::goesBack);
        m_services.longCaptures.start(kind, nativeRect, screen);
    });
}

void CaptureController::captureFullScreen()
{
    if (!mayStart()) {
        bringSavePanelForward();
        return;
    }
    const auto screen = screenUnderPointer(*m_services.platform.displays);
    if (!screen)
        return;
    start(Kind::fullScreen, {*screen});
}

void CaptureController::grabOne()
{
    const auto& grabbing = std::get<Grabbing>(m_state);
    ScreenGrabber::capture(*m_services.platform.grabber, grabbing.screens, grabbing.context.get(),
                           [this](Result<std::vector<Shot>> grabbed) {
                               if (!grabbed) {
                                   handleCaptureFailure(grabbed.error());
                                   return;
                               }
                               m_services.results.fullScreen(grabbed.value().front());
                               end();
                           });
    waitForPictures();
}

void CaptureController::fail(const std::function<void()>& tell)
{
    const bool ending = m_wrappedUp != nullptr; // nobody is there to read it
    end();
    if (!ending)
        tell();
}

void CaptureController::handleCaptureFailure(const Error& error)
{
    fail([&] { m_services.failure.handle(error); });
}

// A toast, because an alert could not be answered either.
void CaptureController::handleTakenInput()
{
    fail([this] {
        if (m_services.failure.speaks())
            m_services.toast.show(
                text("Captura cancelada: otro programa retiene el ratón o el teclado"),
                screenUnderPointer(*m_services.platform.displays));
    });
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
            held = held || window->canvas()->isInUse();
            if (!held)
                m_overlays.remove(*window);
        }
        const auto& session = m_overlays.session();
        if (held || session.empty())
            finish(outcome::Cancel{});
        else if (std::ranges::none_of(session, &OverlayWindow::isActiveWindow))
            // The one that had the keys is gone.
            m_overlays.focus(m_services.platform.displays->pointer());
    }
    m_overlays.prepare(screens);
}

} // namespace brindlecam
