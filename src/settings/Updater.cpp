#include "settings/Updater.h"

#include "base/Text.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "platform/FileOpener.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/ReleaseFeed.h"

#include <QCoreApplication>
#include <QDialog>
#include <QUrl>

#include <utility>

namespace brindlecam {

namespace {

constexpr qint64 kDaySeconds = 86400;

QString lastCheckKey()
{
    return QStringLiteral("updateLastCheck");
}

QString notifiedKey()
{
    return QStringLiteral("updateNotifiedVersion");
}

} // namespace

Updater::Updater(const Rooms& rooms)
    : Updater(rooms, Timing())
{
}

Updater::Updater(const Rooms& rooms, Timing timing)
    : m_rooms(rooms)
    , m_timing(std::move(timing))
{
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { checkIfDue(); });
    m_idleTimer.setSingleShot(true);
    connect(&m_idleTimer, &QTimer::timeout, this, [this] { offerWhenIdle(); });
}

QString Updater::installedVersion()
{
    const QString version = QCoreApplication::applicationVersion();
    return version.isEmpty() ? QStringLiteral("0") : version;
}

bool Updater::canAsk() const
{
    return m_rooms.feed.exists();
}

void Updater::start()
{
    if (!canAsk())
        return;
    m_timer.start(m_timing.again);
    QTimer::singleShot(m_timing.first, this, [this] { checkIfDue(); });
}

void Updater::checkIfDue()
{
    if (!m_rooms.prefs.checkUpdates() || m_rooms.activity.quitting())
        return;
    const std::optional<QDateTime> last = m_rooms.prefs.defaults().date(lastCheckKey());
    if (!last || last->secsTo(m_timing.now()) >= kDaySeconds)
        check(Asker::clock);
}

void Updater::check(Asker asker)
{
    if (!canAsk() || std::exchange(m_checking, true))
        return;
    m_rooms.feed.fetch(this, [this, asker](const std::optional<QByteArray>& answer) {
        m_checking = false;
        if (m_rooms.activity.quitting())
            return;
        finish(answer ? Release::fromJson(*answer) : std::nullopt, asker);
    });
}

void Updater::finish(const std::optional<Release>& release, Asker asker)
{
    if (!release || !Release::isSafe(release->url)) {
        if (asker == Asker::user)
            tell(text("No se pudo buscar actualizaciones"),
                 text("Revisa tu conexión a internet e inténtalo de nuevo."));
        return;
    }
    m_rooms.prefs.defaults().setDate(lastCheckKey(), m_timing.now());
    const bool isNewer = Release::isVersion(release->version, installedVersion());
    m_available = isNewer ? release : std::nullopt;
    onChange();
    if (!isNewer) {
        delete m_offer; // it would lead nowhere
        if (asker == Asker::user)
            tell(text("Brindlecam está al día"),
                 text("Tienes la versión %1, la más reciente.").arg(installedVersion()));
        return;
    }
    const bool wasTold = m_rooms.prefs.defaults().string(notifiedKey()) == release->version;
    if (asker == Asker::user || !wasTold)
        offerWhenIdle();
}

// Who asks again before that has been read need not be told twice.
void Updater::tell(const QString& message, const QString& informative)
{
    if (m_told == message)
        return;
    m_told = message;
    m_rooms.alerts.show({.message = message, .informative = informative},
                        [self = QPointer(this), message](std::optional<int>) {
                            if (self && self->m_told == message)
                                self->m_told.clear();
                        });
}

void Updater::offerWhenIdle()
{
    if (m_rooms.activity.quitting() || !m_available)
        return;
    if (m_rooms.activity.any()) {
        m_idleTimer.start(m_timing.idleAgain);
        return;
    }
    m_rooms.prefs.defaults().setString(notifiedKey(), m_available->version);
    offer(*m_available);
}

void Updater::offer(const Release& release)
{
    QString informative =
        text("Tienes la %1 y ya está disponible la %2.").arg(installedVersion(), release.version);
    if (const QString notes = release.notesIn(language()); !notes.isEmpty())
        informative += QStringLiteral("\n\n") + notes;
    m_idleTimer.stop();
    delete m_offer; // nobody has answered it
    m_offer = m_rooms.alerts.show({.message = text("Hay una versión nueva de Brindlecam"),
                                   .informative = informative,
                                   .buttons = {text("Descargar"), text("Más tarde")}},
                                  [self = QPointer(this)](std::optional<int> chosen) {
                                      constexpr int kDownload = 0;
                                      if (self && chosen == kDownload)
                                          self->openDownload();
                                  });
}

void Updater::openDownload()
{
    const QString page = m_available ? m_available->pageIn(language()) : QString();
    if (!Release::isSafe(page))
        return;
    m_rooms.opener.openPage(QUrl(page, QUrl::StrictMode), this, [this, page](bool opened) {
        if (!opened)
            tell(text("No se pudo abrir la página"), page);
    });
}

} // namespace brindlecam
