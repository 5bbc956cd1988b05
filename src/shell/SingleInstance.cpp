#include "shell/SingleInstance.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QThread>

#include <utility>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kBetweenKnocks{20};
/// How long after its lock's date a copy may be deaf: on a cold disk it loads libraries and fonts
/// before it listens.
constexpr std::chrono::seconds kStartPatience{10};
/// How long a copy may take to end: what it has captured is encoded and written first.
constexpr std::chrono::seconds kEndPatience{60};
/// However the dates read.
constexpr int kMostKnocks = (kStartPatience + kEndPatience) / kBetweenKnocks;

enum class Knock { nobodyListens, hungUp, shut, silent };

std::variant<InstanceReply, Knock> ask(const QString& path, const InstanceRequest& request,
                                       std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    const auto left = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(left())) {
        switch (socket.error()) {
        case QLocalSocket::ServerNotFoundError:
        case QLocalSocket::ConnectionRefusedError:
        case QLocalSocket::PeerClosedError:
            return Knock::nobodyListens;
        default:
            return deadline.hasExpired() ? Knock::silent : Knock::shut;
        }
    }
    socket.write(InstanceMessages::line(request));
    QByteArray answer;
    while (answer.size() <= BRINDLECAM_LONGEST_ANSWER) {
        const bool more = socket.waitForReadyRead(left());
        answer += socket.readAll();
        if (more)
            continue;
        if (deadline.hasExpired() && socket.state() == QLocalSocket::ConnectedState)
            return Knock::silent;
        if (const auto reply = InstanceMessages::readReply(answer))
            return *reply;
        break;
    }
    return Knock::hungUp;
}

} // namespace

void SingleInstance::sleep(std::chrono::milliseconds time)
{
    QThread::msleep(static_cast<unsigned long>(time.count()));
}

SingleInstance::SingleInstance(InstancePlace place)
    : SingleInstance(std::move(place), Waiting())
{
}

SingleInstance::SingleInstance(InstancePlace place, Waiting waiting)
    : m_place(std::move(place))
    , m_waiting(std::move(waiting))
    , m_lock(m_place.lock)
{
    // A lock is stale when its process is gone, never for its age.
    m_lock.setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Hold SingleInstance::takeLock()
{
    if (m_place.exists() && m_lock.tryLock())
        return Hold::ours;
    return m_place.exists() && m_lock.error() == QLockFile::LockFailedError ? Hold::theirs
                                                                            : Hold::impossible;
}

// The date of the lock tells since when its holder is about to listen, or until when it may end.
void SingleInstance::dateLock(const QDateTime& time) const
{
    QFile lock(m_place.lock);
    if (m_lock.isLocked() && lock.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        lock.setFileTime(time, QFileDevice::FileModificationTime);
}

bool SingleInstance::isWorthWaiting() const
{
    const QDateTime date = QFileInfo(m_place.lock).lastModified();
    // No lock any more: the next try takes it.
    return !date.isValid() || m_waiting.now() < date.addSecs(kStartPatience.count());
}

SingleInstance::Outcome SingleInstance::handOver(const InstanceRequest& request)
{
    for (int knock = 0;; ++knock) {
        const Hold hold = takeLock();
        if (hold == Hold::ours || !m_place.exists())
            return First();
        const auto answer = ask(m_place.socket, request, m_waiting.answer);
        if (const auto* reply = std::get_if<InstanceReply>(&answer))
            return *reply;
        // Better two copies than none where no lock can be made at all.
        if (hold == Hold::impossible)
            return First();
        const Knock heard = std::get<Knock>(answer);
        const bool mayChange = heard == Knock::nobodyListens || heard == Knock::hungUp;
        if (!mayChange || knock >= kMostKnocks || !isWorthWaiting())
            return Unanswered();
        m_waiting.pause(kBetweenKnocks);
    }
}

bool SingleInstance::listen(InstanceServer::Handler handler)
{
    if (!m_place.exists())
        return false;
    m_server = std::make_unique<InstanceServer>(std::move(handler));
    if (m_server->listen(m_place.socket))
        return true;
    dateLock(m_waiting.now().addSecs(-kStartPatience.count()));
    return false;
}

void SingleInstance::hangUp()
{
    if (!m_server)
        return;
    dateLock(m_waiting.now().addSecs((kEndPatience - kStartPatience).count()));
    m_server->hangUp();
}

} // namespace brindlecam
