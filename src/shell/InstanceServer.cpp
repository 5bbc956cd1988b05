#include "shell/InstanceServer.h"

#include "shell/Commands.h"
#include "shell/InstanceProtocol.h"

#include <QLocalSocket>
#include <QTimer>

#include <poll.h>

#include <utility>

namespace brindlecam {

namespace {

/// Whether the other end has hung up. What it sent may be there all the same, and QLocalSocket
/// notices the end only once it has read that.
bool hasLeft(const QLocalSocket& client)
{
    pollfd end{.fd = static_cast<int>(client.socketDescriptor()), .events = 0, .revents = 0};
    return end.fd < 0 || (::poll(&end, 1, 0) > 0 && (end.revents & (POLLHUP | POLLERR)) != 0);
}

} // namespace

InstanceServer::InstanceServer(Handler handler, std::chrono::milliseconds patience)
    : m_handler(std::move(handler))
    , m_patience(patience)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* client = m_server.nextPendingConnection())
            welcome(*client);
    });
}

bool InstanceServer::listen(const QString& path)
{
    QLocalServer::removeServer(path);
    return m_server.listen(path);
}

void InstanceServer::hangUp()
{
    m_server.close();
    for (QLocalSocket* client : m_server.findChildren<QLocalSocket*>())
        client->abort();
}

void InstanceServer::welcome(QLocalSocket& client)
{
    client.setReadBufferSize(BRINDLECAM_LONGEST_LINE);
    connect(&client, &QLocalSocket::disconnected, &client, &QObject::deleteLater);
    connect(&client, &QLocalSocket::readyRead, this, [this, &client] { read(client); });
    QTimer::singleShot(m_patience, &client, &QLocalSocket::abort);
    // What came before we connected to the signal is not signalled again.
    read(client);
}

void InstanceServer::read(QLocalSocket& client)
{
    if (!client.canReadLine()) {
        if (client.bytesAvailable() >= BRINDLECAM_LONGEST_LINE)
            client.abort();
        return;
    }
    // One line is all we take, whatever follows it.
    disconnect(&client, &QLocalSocket::readyRead, this, nullptr);
    answer(client, client.readLine(BRINDLECAM_LONGEST_LINE + 1));
}

void InstanceServer::answer(QLocalSocket& client, const QByteArray& line)
{
    const auto request = InstanceMessages::readRequest(line);
    if (hasLeft(client) || std::holds_alternative<InstanceMessages::Nonsense>(request)) {
        client.abort();
        return;
    }
    const auto* understood = std::get_if<InstanceRequest>(&request);
    const InstanceAnswer answer =
        understood ? m_handler(*understood) : InstanceAnswer{Commands::otherVersionReply()};
    client.write(InstanceMessages::bytes(answer.reply));
    client.flush();
    const bool told = client.state() == QLocalSocket::ConnectedState;
    client.disconnectFromServer();
    if (told && answer.carryOut)
        answer.carryOut();
}

} // namespace brindlecam
