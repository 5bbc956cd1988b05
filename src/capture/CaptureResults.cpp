#include "capture/CaptureResults.h"

#include "app/Prefs.h"
#include "app/Toast.h"
#include "capture/Output.h"
#include "capture/ResultToast.h"
#include "capture/SavePanel.h"

#include <QDir>

#include <utility>

namespace brindlecam {

CaptureResults::CaptureResults(const Prefs& prefs, Output& output, Toast& toast, Alerts& alerts)
    : m_prefs(prefs)
    , m_output(output)
    , m_toast(toast)
    , m_alerts(alerts)
{
}

QString CaptureResults::pathInFolder() const
{
    return QDir(m_prefs.saveFolder()).filePath(Prefs::newFileName());
}

void CaptureResults::area(const Rendered& picture, const std::optional<ScreenInfo>& screen)
{
    const QString saveTo = m_prefs.autoSaveArea() ? pathInFolder() : QString();
    m_output.deliver(picture, {.copy = true, .saveTo = saveTo, .history = true},
                     [&toast = m_toast, screen, requested = !saveTo.isEmpty()](bool saved) {
                         toast.show(ResultToast::message(ResultToast::Kind::area,
                                                         {.requested = requested, .saved = saved}),
                                    screen);
                     });
}

void CaptureResults::fullScreen(const Shot& shot)
{
    const QString saveTo = m_prefs.autoSaveFullScreen() ? pathInFolder() : QString();
    m_output.deliver(
        Rendered(shot.image, shot.screen.size()), {.copy = true, .saveTo = saveTo, .history = true},
        [&toast = m_toast, screen = shot.screen, requested = !saveTo.isEmpty()](bool saved) {
            toast.show(ResultToast::message(ResultToast::Kind::fullScreen,
                                            {.requested = requested, .saved = saved}),
                       screen);
        });
    sessionEnded();
}

void CaptureResults::text(const QString& recognised, const std::optional<ScreenInfo>& screen)
{
    m_output.copyText(recognised);
    m_toast.show(ResultToast::textMessage(recognised), screen);
}

void CaptureResults::pinned(const Rendered& picture)
{
    m_output.deliver(picture, {.copy = true, .history = true});
}

void CaptureResults::copied(const Rendered& picture, std::function<void()> done)
{
    m_output.deliver(picture, {.copy = true}, [done = std::move(done)](bool) {
        if (done)
            done();
    });
    sessionEnded();
}

void CaptureResults::live(const Rendered& picture)
{
    m_output.deliver(picture, {.copy = true, .soonStale = true});
}

void CaptureResults::keep(const Rendered& picture)
{
    m_output.deliver(picture, {.history = true});
}

void CaptureResults::save(const Rendered& picture, std::function<void()> closed)
{
    SavePanel::open(
        m_alerts, m_prefs.saveFolder(), Prefs::newFileName(),
        [&output = m_output, picture, closed = std::move(closed)](std::optional<QString> path) {
            if (path)
                output.writeFile(picture, *path);
            if (closed)
                closed();
        });
}

void CaptureResults::sessionEnded()
{
    m_output.forgetLastCopy();
}

} // namespace brindlecam
