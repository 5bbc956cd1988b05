#include "https/HttpsServer.h"

#include <QSslConfiguration>
#include <QTcpSocket>

namespace brindlecam::https {

HttpsServer::HttpsServer(const Identity& identity)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(identity.certificate);
    configuration.setPrivateKey(identity.key);
    m_server.setSslConfiguration(configuration);
    QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server, [this] {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket,
                             [this, socket] { serve(*socket); });
            if (socket->bytesAvailable() > 0)
                serve(*socket);
        }
    });
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no port is free");
}

QUrl HttpsServer::address() const
{
    return QUrl(QStringLiteral("https://localhost:%1/version.json").arg(m_server.serverPort()));
}

// The requests here have no body: they are as long as they take until an empty line.
void HttpsServer::serve(QTcpSocket& socket)
{
    const QByteArray soFar = socket.property("request").toByteArray() + socket.readAll();
    socket.setProperty("request", soFar);
    if (!soFar.endsWith("\r\n\r\n"))
        return;
    m_requests << soFar;
    if (onRequest) {
        onRequest(socket);
    } else if (!answer.isEmpty()) {
        socket.write(answer);
        socket.disconnectFromHost();
    }
}

QByteArray HttpsServer::ok(const QByteArray& body)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
           QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

QByteArray HttpsServer::redirect(const QByteArray& where)
{
    return "HTTP/1.1 302 Found\r\nLocation: " + where +
           "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

} // namespace brindlecam::https
