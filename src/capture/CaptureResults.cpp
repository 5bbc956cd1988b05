#include "capture/CaptureResults.h"

#include "base/Text.h"
#include "capture/Output.h"
#include "capture/SavePanel.h"
#include "notices/Progress.h"
#include "notices/Toast.h"
#include "preferences/Prefs.h"

#include <QDir>

#include <chrono>
#include <utility>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kPagePatience{1000};

} // namespace

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

QString CaptureResults::areaPath() const
{
    return m_prefs.autoSaveArea() ? pathInFolder() : QString();
}

void CaptureResults::Teller::tell(const std::optional<QString>& message) const
{
    if (message)
        toast.show(*message, screen);
}

void CaptureResults::deliverCaptured(ResultToast::Kind kind, const Rendered& picture,
                                     const QString& saveTo, const Screen& screen)
{
    m_output.deliver(picture, {.copy = true, .saveTo = saveTo, .history = true},
                     [to = teller(screen), kind](const Fate& fate) {
                         to.tell(ResultToast::message(kind, fate));
                     });
}

void CaptureResults::area(const Rendered& picture, const Screen& screen)
{
    deliverCaptured(ResultToast::Kind::area, picture, areaPath(), screen);
}

void CaptureResults::page(const Rendered& picture, const Screen& screen)
{
    auto progress = std::make_shared<Progress>(
        m_toast, ::brindlecam::text("Preparando la captura larga…"), screen, kPagePatience);
    m_output.deliver(picture, {.copy = true, .saveTo = areaPath(), .history = true},
                     [to = teller(screen), rows = picture.image().height(),
                      progress = std::move(progress)](const Fate& fate) mutable {
                         progress.reset();
                         to.tell(ResultToast::pageMessage(rows, fate));
                     });
    sessionEnded();
}

void CaptureResults::fullScreen(const Shot& shot)
{
    const QString saveTo = m_prefs.autoSaveFullScreen() ? pathInFolder() : QString();
    deliverCaptured(ResultToast::Kind::fullScreen, Rendered(shot.image, shot.screen.size()), saveTo,
                    shot.screen);
    sessionEnded();
}

void CaptureResults::text(const QString& recognised, const Screen& screen)
{
    m_output.copy(ClipboardContent::text(recognised),
                  [to = teller(screen), recognised](ClipboardFate fate) {
                      to.tell(ResultToast::textMessage(recognised, fate));
                  });
}

void CaptureResults::pinned(const Rendered& picture, const Screen& screen)
{
    m_output.deliver(picture, {.copy = true, .history = true},
                     [to = teller(screen)](const Fate& fate) {
                         if (fate.clipboard == ClipboardFate::refused)
                             to.tell(ResultToast::notCopied());
                     });
}

void CaptureResults::copyPinned(const Rendered& picture, std::function<void(ClipboardFate)> done)
{
    m_output.deliver(picture, {.copy = true}, [done = std::move(done)](const Fate& fate) {
        if (done)
            done(fate.clipboard.value_or(ClipboardFate::refused));
    });
    sessionEnded();
}

void CaptureResults::live(const Rendered& picture)
{
    m_output.deliver(picture, {.copy = true, .soonStale = true}, [live = m_live](const Fate& fate) {
        if (fate.clipboard == ClipboardFate::overtaken)
            return;
        live->refused = fate.clipboard == ClipboardFate::refused;
        if (live->refused && live->tell)
            live->tell();
    });
}

void CaptureResults::keep(const Rendered& picture, const Screen& screen)
{
    m_output.deliver(picture, {.history = true});
    m_live->tell = [to = teller(screen)] { to.tell(ResultToast::notCopied()); };
    if (m_live->refused)
        m_live->tell();
}

SavePanel* CaptureResults::save(const Rendered& picture, std::function<void()> closed)
{
    return SavePanel::open(m_alerts, m_prefs.saveFolder(), Prefs::newFileName(),
                           [&output = m_output, to = teller(std::nullopt), picture,
                            closed = std::move(closed)](std::optional<QString> path) {
                               if (path) {
                                   output.writeFile(picture, *path, [to](const Fate& fate) {
                                       to.tell(ResultToast::saveMessage(fate));
                                   });
                               }
                               if (closed)
                                   closed();
                           });
}

void CaptureResults::savePinned(const Rendered& picture)
{
    save(picture);
}

void CaptureResults::sessionEnded()
{
    m_output.sessionEnded();
    m_live = std::make_shared<LiveCopy>();
}

} // namespace brindlecam
