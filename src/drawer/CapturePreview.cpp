#include "drawer/CapturePreview.h"

#include "base/Text.h"
#include "drawer/PreviewWindow.h"
#include "notices/Activity.h"
#include "notices/Toast.h"
#include "platform/Platform.h"

#include <utility>

namespace brindlecam {

namespace {

constexpr qreal kShareOfScreen = 0.9; // the rest is the window's frame, and some air

} // namespace

CapturePreview::CapturePreview(Platform& platform, Toast& toast, const Activity& activity,
                               Executor executor)
    : m_platform(platform)
    , m_toast(toast)
    , m_activity(activity)
    , m_executor(std::move(executor))
{
}

CapturePreview::~CapturePreview() = default;

void CapturePreview::show(const QString& path, const ScreenInfo& screen)
{
    discardWindow();
    m_asked = std::make_unique<QObject>();
    m_elsewhere = Elsewhere::asked;
    m_platform.fileOpener->preview(path, m_asked.get(), [this, path, screen](bool shown) {
        const auto before = std::exchange(m_elsewhere, shown ? Elsewhere::shown : Elsewhere::none);
        if (!shown && before == Elsewhere::asked)
            showHere(path, screen);
    });
}

void CapturePreview::showHere(const QString& path, const ScreenInfo& screen)
{
    const QRect& free = screen.visibleFrame;
    m_window = std::make_unique<PreviewWindow>(path, free.size() * kShareOfScreen, screen.scale,
                                               m_executor);
    m_platform.panels->assume(*m_window, PanelRole::dialog, {});
    m_window->onReady = [this, free] {
        QRect place(QPoint(), m_window->pixels());
        place.moveCenter(free.center());
        m_platform.panels->show(*m_window, place);
    };
    m_window->onFailed = [this, screen] { failed(screen); };
    m_window->onClosed = [this] { closed(); };
    m_window->load();
}

void CapturePreview::failed(const ScreenInfo& screen)
{
    closed();
    m_toast.show(text("No se pudo leer la captura"), screen);
}

void CapturePreview::closed()
{
    discardWindow();
    if (!m_activity.any())
        m_platform.frontApplication->giveBack();
}

// Later: it is the window itself that tells us.
void CapturePreview::discardWindow()
{
    if (!m_window)
        return;
    m_window->onReady = m_window->onFailed = m_window->onClosed = [] {}; // nobody listens
    m_window->hide();
    m_window.release()->deleteLater();
}

bool CapturePreview::leave(ScreenCover::Focus focus)
{
    const bool shown = (m_window && m_window->isVisible()) || m_elsewhere == Elsewhere::shown;
    m_asked.reset();
    if (std::exchange(m_elsewhere, Elsewhere::none) != Elsewhere::none)
        m_platform.fileOpener->endPreview();
    if (focus == ScreenCover::Focus::goesBack && m_window && m_window->isActiveWindow())
        m_platform.frontApplication->giveBack();
    discardWindow();
    return shown;
}

} // namespace brindlecam
