#include "app/SingleInstance.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include <utility>

namespace brindlecam {

namespace {

constexpr std::chrono::seconds kAnswerPatience{2};
/// A copy that holds the lock and does not listen yet loads its libraries and fonts, on a cold
/// disk.
constexpr std::chrono::seconds kStartPatience{10};
constexpr std::chrono::milliseconds kBetweenKnocks{20};

enum class Knock { nobodyListens, hungUp, silent, answered };

struct Answer {
    Knock knock = Knock::nobodyListens;
    InstanceReply reply = InstanceReply::unavailable;
};

Answer ask(const QString& path, const InstanceRequest& request)
{
    const QDeadlineTimer deadline(kAnswerPatience);
    const auto left = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(left()))
        return {};
    socket.write(InstanceProtocol::line(request));
    while (!socket.canReadLine()) {
        if (socket.bytesAvailable() >= InstanceProtocol::kLongestLine)
            return {Knock::hungUp};
        if (!socket.waitForReadyRead(left()) && !socket.canReadLine())
            return {deadline.hasExpired() ? Knock::silent : Knock::hungUp};
    }
    const auto reply = InstanceProtocol::readReply(socket.readLine());
    return reply ? Answer{Knock::answered, *reply} : Answer{Knock::hungUp};
}

} // namespace

SingleInstance::SingleInstance(const QString& folder)
    : m_hasFolder(!folder.isEmpty())
    , m_socket(folder + QStringLiteral("/brindlecam.socket"))
    , m_lock(folder + QStringLiteral("/brindlecam.lock"))
{
    // A lock is stale when its process is gone, never for its age.
    m_lock.setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::runtimeFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

bool SingleInstance::takeLock()
{
    if (!m_hasFolder || m_lock.tryLock())
        return true;
    // Better two copies than none where no lock can be made at all.
    return m_lock.error() != QLockFile::LockFailedError;
}

SingleInstance::Outcome SingleInstance::handOver(const InstanceRequest& request)
{
    const QDeadlineTimer deadline(kStartPatience);
    while (!takeLock()) {
        const Answer answer = ask(m_socket, request);
        if (answer.knock == Knock::answered) {
            return answer.reply == InstanceReply::performed ? Outcome::performed
                                                            : Outcome::unavailable;
        }
        if (answer.knock == Knock::silent || deadline.hasExpired())
            return Outcome::unanswered;
        QThread::msleep(kBetweenKnocks.count());
    }
    return Outcome::first;
}

bool SingleInstance::listen(InstanceServer::Handler handler)
{
    if (!m_hasFolder)
        return false;
    m_server = std::make_unique<InstanceServer>(std::move(handler));
    return m_server->listen(m_socket);
}

} // namespace brindlecam
