#include "app/InstanceServer.h"

#include <QLocalSocket>
#include <QTimer>

#include <utility>

namespace brindlecam {

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

void InstanceServer::welcome(QLocalSocket& client)
{
    client.setReadBufferSize(InstanceProtocol::kLongestLine);
    connect(&client, &QLocalSocket::disconnected, &client, &QObject::deleteLater);
    connect(&client, &QLocalSocket::readyRead, this, [this, &client] { read(client); });
    QTimer::singleShot(m_patience, &client, &QLocalSocket::abort);
    // What came before we connected to the signal is not signalled again.
    read(client);
}

void InstanceServer::read(QLocalSocket& client)
{
    if (!client.canReadLine()) {
        if (client.bytesAvailable() >= InstanceProtocol::kLongestLine)
            client.abort();
        return;
    }
    // One line is all we take, whatever follows it.
    disconnect(&client, &QLocalSocket::readyRead, this, nullptr);
    const auto request =
        InstanceProtocol::readRequest(client.readLine(InstanceProtocol::kLongestLine + 1));
    if (!request) {
        client.abort();
        return;
    }
    client.write(InstanceProtocol::line(m_handler(*request)));
    client.disconnectFromServer();
}

} // namespace brindlecam
