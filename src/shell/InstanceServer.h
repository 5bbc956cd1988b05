#pragma once

#include "shell/InstanceMessages.h"

#include <QLocalServer>

#include <chrono>
#include <functional>

class QLocalSocket;

namespace brindlecam {

/// The running copy's ear for the copies started after it. Answers whole lines it knows and hangs
/// up on everything else: other words, lines without an end, clients that say nothing. Main thread.
class InstanceServer final : public QObject {
    Q_OBJECT

public:
    /// Says what becomes of a request; what it is to do comes after that. Soon: the other copy
    /// waits.
    using Handler = std::function<InstanceAnswer(const InstanceRequest&)>;

    /// A client may take `patience` for its line.
    explicit InstanceServer(Handler handler,
                            std::chrono::milliseconds patience = std::chrono::seconds(2));

    /// Listens at this path in place of whatever a crashed run left there. False when the path
    /// can't be used; the program then runs without being reachable.
    bool listen(const QString& path);

    /// Gives the path up and lets everybody go who has no answer yet.
    void hangUp();

private:
    void welcome(QLocalSocket& client);
    void read(QLocalSocket& client);
    void answer(QLocalSocket& client, const QByteArray& line);

    Handler m_handler;
    const std::chrono::milliseconds m_patience;
    QLocalServer m_server;
};

} // namespace brindlecam
