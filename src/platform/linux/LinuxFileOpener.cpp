#include "platform/linux/LinuxFileOpener.h"

#include "platform/linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
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

QString urlOf(const QString& path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

const auto kPreviewer = QStringLiteral("org.gnome.NautilusPreviewer");

QDBusMessage previewerCall(const char* method)
{
    return QDBusMessage::createMethodCall(kPreviewer,
                                          QStringLiteral("/org/gnome/NautilusPreviewer"),
                                          kPreviewer, QString::fromLatin1(method));
}

} // namespace

LinuxFileOpener::LinuxFileOpener()
    : LinuxFileOpener(Timing())
{
}

LinuxFileOpener::LinuxFileOpener(Timing timing)
    : m_timing(timing)
{
}

LinuxFileOpener::Answer LinuxFileOpener::answerOnce(QObject* context, Done done)
{
    const auto pending = std::make_shared<Done>(std::move(done));
    return [context = QPointer<QObject>(context), pending](bool opened) {
        const Done now = std::exchange(*pending, {});
        if (now && context)
            QMetaObject::invokeMethod(
                context, [now, opened] { now(opened); }, Qt::QueuedConnection);
    };
}

void LinuxFileOpener::openFolder(const QString& path, QObject* context, Done done)
{
    const Answer answer = answerOnce(context, std::move(done));
    if (QFileInfo(path).isDir())
        askFileManager(QStringLiteral("ShowFolders"), path, answer,
                       [this, path, answer] { startOpener(path, answer); });
    else
        answer(false);
}

void LinuxFileOpener::openFile(const QString& path, QObject* context, Done done)
{
    const Answer answer = answerOnce(context, std::move(done));
    if (QFileInfo(path).isFile())
        startOpener(path, answer);
    else
        answer(false);
}

void LinuxFileOpener::openPage(const QUrl& page, QObject* context, Done done)
{
    startOpener(page.toString(QUrl::FullyEncoded), answerOnce(context, std::move(done)));
}

void LinuxFileOpener::reveal(const QString& path, QObject* context, Done done)
{
    const Answer answer = answerOnce(context, std::move(done));
    const QFileInfo file(path);
    if (file.isFile())
        askFileManager(QStringLiteral("ShowItems"), path, answer,
                       [this, folder = file.path(), answer] { startOpener(folder, answer); });
    else
        answer(false);
}

void LinuxFileOpener::askFileManager(const QString& method, const QString& path,
                                     const Answer& answer, const std::function<void()>& otherwise)
{
    const QString manager = QStringLiteral("org.freedesktop.FileManager1");
    auto message = QDBusMessage::createMethodCall(
        manager, QStringLiteral("/org/freedesktop/FileManager1"), manager, method);
    message << QStringList(urlOf(path)) << QString();
    call(message, [answer, otherwise](bool shown) {
        if (shown)
            answer(true);
        else
            otherwise();
    });
}

void LinuxFileOpener::call(const QDBusMessage& message, const Answer& answer)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        answer(false);
        return;
    }
    auto* const reply = new QDBusPendingCallWatcher(
        bus.asyncCall(message, static_cast<int>(m_timing.answer.count())), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [reply, answer] {
        reply->deleteLater();
        answer(!reply->isError());
    });
}

void LinuxFileOpener::preview(const QString& path, QObject* context, Done done)
{
    // Neither the window that it would lie above, nor to close when the same is shown already.
    constexpr int kNoParent = 0;
    constexpr bool kStays = false;
    QDBusMessage message = previewerCall("ShowFile");
    message << urlOf(path) << kNoParent << kStays;
    if (!m_previewer) {
        m_previewer = new QDBusServiceWatcher(kPreviewer, QDBusConnection::sessionBus(),
                                              QDBusServiceWatcher::WatchForUnregistration, this);
        connect(m_previewer, &QDBusServiceWatcher::serviceUnregistered, this,
                [this] { previewerIsGone(); });
    }
    m_previewWanted = true;
    m_tellGone = [answer = answerOnce(context, done)] { answer(false); };
    call(message, [this, answer = answerOnce(context, std::move(done))](bool shown) {
        previewAnswered(shown);
        answer(shown);
    });
}

// A previewer that has to be started first may show what nobody wants to see any more by then.
void LinuxFileOpener::previewAnswered(bool shown)
{
    if (!shown)
        return;
    m_previewed = m_previewWanted;
    if (!m_previewWanted)
        closePreview();
}

void LinuxFileOpener::endPreview()
{
    m_previewWanted = false;
    if (std::exchange(m_previewed, false))
        closePreview();
}

void LinuxFileOpener::closePreview()
{
    QDBusMessage message = previewerCall("Close");
    message.setAutoStartService(false); // one that is not there shows nothing
    call(message, [](bool) {});
}

// It goes some time after the user has closed its window.
void LinuxFileOpener::previewerIsGone()
{
    if (std::exchange(m_previewed, false))
        m_tellGone();
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
