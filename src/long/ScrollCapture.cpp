#include "long/ScrollCapture.h"

#include "base/Text.h"
#include "capture/CaptureResults.h"
#include "long/FrameLoop.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "pictures/Rendered.h"
#include "platform/Platform.h"
#include "preferences/Config.h"

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

QString calmly()
{
    return text("Desplázate hacia abajo con calma  ·  Enter = listo  ·  Esc = cancelar");
}

QString statusOf(ScrolledPage::State state, int height)
{
    switch (state) {
    case ScrolledPage::State::growing:
        return text("Capturando… %1 px de alto  ·  Enter = listo  ·  Esc = cancelar").arg(height);
    case ScrolledPage::State::tooFast:
        return text("Muy rápido: regresa un poco y baja más despacio");
    case ScrolledPage::State::waiting:
    case ScrolledPage::State::complete:
    case ScrolledPage::State::failed:
        break;
    }
    return calmly();
}

} // namespace

ScrollCapture::Session::Session(const QRect& rect, const ScreenInfo& where)
    : native(rect)
    , screen(where)
{
}

ScrollCapture::Session::~Session() = default;

ScrollCapture::ScrollCapture(const Rooms& rooms)
    : m_rooms(rooms)
    , m_chrome(rooms.platform, rooms.activity)
{
    m_rooms.platform.displays->whenChanged(&m_context, [this] {
        if (isRunning() && !screenIsAsBefore())
            failed();
    });
}

ScrollCapture::~ScrollCapture()
{
    cancel();
}

void ScrollCapture::start(const QRect& native, const ScreenInfo& screen)
{
    if (m_rooms.activity.any())
        return;
    m_rooms.activity.scrollCapture = true;
    m_session = std::make_unique<Session>(native, screen);
    m_rooms.toast.suspend();
    m_rooms.alerts.suspend();
    if (!screenIsAsBefore()) { // it may have changed since the rectangle was selected
        failed();
        return;
    }
    m_rooms.platform.grabber->openRegion(
        native, {.panels = RegionOptions::Panels::leftOut}, &m_session->context,
        [this](Result<std::unique_ptr<RegionFrames>> frames) { opened(std::move(frames)); });
}

// Frame and panel come after the frames that leave them out are open: what they cover is kept from
// then on.

void ScrollCapture::opened(Result<std::unique_ptr<RegionFrames>> frames)
{
    if (!frames) {
        failed();
        return;
    }
    m_chrome.show({.captured = m_session->native,
                   .screen = m_session->screen,
                   .status = calmly(),
                   .doneTitle = text("Listo"),
                   .color = Config::leafGreen,
                   .onDone = [this] { finish(); },
                   .onCancel = [this] { cancel(); }});
    if (!frames.value()->seesBeneathPanels())
        m_chrome.withdrawPanel();
    const auto toMainThread = [this, context = &m_session->context](auto then) {
        QMetaObject::invokeMethod(context, std::move(then), Qt::QueuedConnection);
    };
    m_session->loop = std::make_unique<FrameLoop>(
        std::move(frames).value(),
        [this, toMainThread, &page = m_session->page,
         withdrawn = false](const Result<RegionFrame>& frame) mutable -> FrameLoop::Pause {
            if (!frame) {
                toMainThread([this] { failed(); });
                return std::nullopt;
            }
            if (frame.value().showsPanels && !std::exchange(withdrawn, true)) {
                toMainThread([this] { m_chrome.withdrawPanel(); });
                return kPause;
            }
            const ScrolledPage::State state = page.add(frame.value().image);
            toMainThread([this, report = Report{state, page.height()}] { seen(report); });
            return kPause;
        });
}

void ScrollCapture::seen(const Report& report)
{
    if (report.state == ScrolledPage::State::failed) {
        failed();
        return;
    }
    if (report.state == ScrolledPage::State::complete)
        finish();
    else
        m_chrome.setText(statusOf(report.state, report.height));
}

bool ScrollCapture::screenIsAsBefore() const
{
    const auto now = screenNow(m_session->screen);
    return now && now->sameDisplay(m_session->screen);
}

// That with the same name, as it is now.
std::optional<ScreenInfo> ScrollCapture::screenNow(const ScreenInfo& screen) const
{
    const auto screens = m_rooms.platform.displays->layout();
    const auto found = std::ranges::find(screens, screen.id, &ScreenInfo::id);
    return found == screens.end() ? std::nullopt : std::optional(*found);
}

// What was seen until then is not thrown away.
void ScrollCapture::failed()
{
    const std::unique_ptr<Session> ended = tearDown();
    if (const auto picture = ended->page.picture()) {
        deliver(*ended, *picture);
    } else {
        m_rooms.toast.show(text("No se pudo iniciar la captura con desplazamiento"),
                           screenNow(ended->screen));
    }
}

void ScrollCapture::finish()
{
    if (!isRunning())
        return;
    const std::unique_ptr<Session> ended = tearDown();
    if (const auto picture = ended->page.picture())
        deliver(*ended, *picture);
}

void ScrollCapture::deliver(const Session& ended, const QImage& picture)
{
    const QSizeF points = QSizeF(picture.size()) / ended.screen.scale;
    m_rooms.results.page(Rendered(picture, points), screenNow(ended.screen));
}

void ScrollCapture::cancel()
{
    if (isRunning())
        tearDown();
}

// Nobody brings frames any more when it returns.
std::unique_ptr<ScrollCapture::Session> ScrollCapture::tearDown()
{
    std::unique_ptr<Session> ended = std::move(m_session);
    ended->loop.reset();
    m_chrome.close();
    m_rooms.activity.scrollCapture = false;
    m_rooms.toast.resume();
    m_rooms.alerts.resume();
    return ended;
}

} // namespace brindlecam
