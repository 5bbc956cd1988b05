#pragma once

#include "https/Certificates.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QSslServer>
#include <QUrl>

#include <functional>

class QTcpSocket;

namespace brindlecam::https {

/// A web host on this machine, in the thread that makes it. Answers each request with the same
/// bytes, or goes on as the test wants.
class HttpsServer final {
public:
    explicit HttpsServer(const Identity& identity);

    [[nodiscard]] QUrl address() const;

    /// The whole answer, with its first lines; see ok(). Empty: it never answers.
    QByteArray answer;
    /// Instead of that, for what no bytes can say.
    std::function<void(QTcpSocket&)> onRequest;

    /// The first lines of each request, and how many there were.
    [[nodiscard]] const QByteArrayList& requests() const { return m_requests; }

    /// A page of status 200 with this body.
    [[nodiscard]] static QByteArray ok(const QByteArray& body);
    [[nodiscard]] static QByteArray redirect(const QByteArray& where);

private:
    void serve(QTcpSocket& socket);

    QSslServer m_server;
    QByteArrayList m_requests;
};

} // namespace brindlecam::https
