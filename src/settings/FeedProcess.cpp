#include "settings/FeedProcess.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>

#include <utility>

namespace brindlecam {

namespace {

/// Ends with its object, without a word: QProcess warns.
class EndingProcess final : public QProcess {
public:
    using QProcess::QProcess;
    ~EndingProcess() override
    {
        if (state() == NotRunning)
            return;
        kill();
        waitForFinished();
    }
};

} // namespace

FeedProcess::FeedProcess(QString program, std::optional<QUrl> feed, QString userAgent,
                         std::chrono::milliseconds patience)
    : m_program(std::move(program))
    , m_feed(std::move(feed))
    , m_userAgent(std::move(userAgent))
    , m_patience(patience)
{
}

QString FeedProcess::standardProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/brindlecam_fetch");
}

void FeedProcess::fetch(QObject* context, std::function<void(std::optional<QByteArray>)> done)
{
    auto* process = new EndingProcess(context);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, context, [process, done](int code) {
        process->deleteLater();
        const bool told = process->exitStatus() == QProcess::NormalExit && code == 0;
        done(told ? std::optional(process->readAllStandardOutput()) : std::nullopt);
    });
    QObject::connect(process, &QProcess::errorOccurred, context, [process, done](auto error) {
        if (error != QProcess::FailedToStart)
            return; // it also ends then
        process->deleteLater();
        QTimer::singleShot(0, process->parent(), [done] { done(std::nullopt); });
    });
    QTimer::singleShot(m_patience, process, [process] { process->kill(); });
    process->start(m_program, {m_feed.value_or(QUrl()).toString(QUrl::FullyEncoded), m_userAgent});
}

} // namespace brindlecam
