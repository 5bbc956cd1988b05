#include "Session.h"

#include "Photographer.h"
#include "canvas/CanvasView.h"
#include "capture/ScreenGrabber.h"
#include "capture/WindowFinder.h"
#include "platform/Platform.h"

#include <QCoreApplication>

namespace brindlecam::pictures {

Session::Session(Photographer& photographer, Prefs& prefs)
    : m_overlays(*photographer.platform().panels, prefs, m_recognizer)
{
    Platform& platform = photographer.platform();
    const auto screens = platform.displays->screens();
    const auto frames = WindowFinder::frontToBackRects(platform.windowList->frontToBack(), screens,
                                                       QCoreApplication::applicationPid());
    const auto show = [&](const Result<std::vector<Shot>>& shots) {
        if (!shots)
            qFatal("%s", qPrintable(shots.error().message));
        for (const Shot& shot : shots.value()) {
            OverlayWindow& window = m_overlays.fill(shot);
            window.canvas()->setWindowRects(WindowFinder::onScreen(frames, shot.screen));
            window.cover();
        }
    };
    QObject context;
    ScreenGrabber::capture(*platform.grabber, screens, &context, show);
    photographer.await(QStringLiteral("the overlays"),
                       [&] { return !m_overlays.session().empty(); });
    OverlayWindow& window = *m_overlays.session().front();
    platform.panels->focus(window);
    photographer.await(QStringLiteral("the focus"), [&] { return window.canvas()->hasFocus(); });
    photographer.rest();
}

Session::~Session()
{
    m_overlays.removeAll();
}

} // namespace brindlecam::pictures
