#include "platform/linux/LinuxFileOpener.h"

#include "platform/linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <unistd.h>

#include <memory>
#include <utility>

namespace brindlecam {

namespace {

/// A program that goes on when this object goes: on some desktops xdg-open becomes the file
/// manager.
class LastingProcess final : public QProcess {
public:
    explicit LastingProcess(QObject* parent)
        : QProcess(parent)
    {
        // Its own session, and no pipes to us that could break.
        setChildProcessModifier([] { ::setsid(); });
        setStandardInputFile(QProcess::nullDevice());
        setStandardOutputFile(QProcess::nullDevice());
        setStandardErrorFile(QProcess::nullDevice());
    }
    // QProcess kills what still runs when it goes, and startDetached() tells no exit code.
    ~LastingProcess() override { setProcessState(QProcess::NotRunning); }
};

} // namespace

LinuxFileOpener::LinuxFileOpener()
    : LinuxFileOpener(Timing())
{
}

LinuxFileOpener::LinuxFileOpener(Timing timing)
    : m_timing(timing)
{
}

void LinuxFileOpener::openFolder(const QString& path, QObject* context, Done done)
{
    const auto pending = std::make_shared<Done>(std::move(done));
    const Answer answer = [context = QPointer<QObject>(context), pending](bool opened) {
        const Done now = std::exchange(*pending, {});
        if (now && context)
            QMetaObject::invokeMethod(
                context, [now, opened] { now(opened); }, Qt::QueuedConnection);
    };
    if (QFileInfo(path).isDir())
        askFileManager(path, answer);
    else
        answer(false);
}

void LinuxFileOpener::askFileManager(const QString& path, const Answer& answer)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        startOpener(path, answer);
        return;
    }
    const QString manager = QStringLiteral("org.freedesktop.FileManager1");
    auto call =
        QDBusMessage::createMethodCall(manager, QStringLiteral("/org/freedesktop/FileManager1"),
                                       manager, QStringLiteral("ShowFolders"));
    const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    call << QStringList(url) << QString();
    auto* const reply = new QDBusPendingCallWatcher(
        bus.asyncCall(call, static_cast<int>(m_timing.answer.count())), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply, path, answer] {
        reply->deleteLater();
        if (reply->isError())
            startOpener(path, answer);
        else
            answer(true);
    });
}

void LinuxFileOpener::startOpener(const QString& path, const Answer& answer)
{
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty()) {
        answer(false);
        return;
    }
    auto* const process = new LastingProcess(this);
    process->setProcessEnvironment(SessionBus::environmentOfOthers());
    connect(process, &QProcess::finished, this, [process, answer](int code) {
        process->deleteLater();
        answer(process->exitStatus() == QProcess::NormalExit && code == 0);
    });
    connect(process, &QProcess::errorOccurred, this, [process, answer](auto error) {
        if (error != QProcess::FailedToStart)
            return;
        process->deleteLater();
        answer(false);
    });
    QTimer::singleShot(m_timing.start, process, [answer] { answer(true); });
    process->start(opener, {path});
}

} // namespace brindlecam
