#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QNetworkReply;

namespace brindlecam {

/// One question to a web host, by HTTPS and nothing else, whatever it is redirected to. Nothing of
/// it is stored. The thread of its event loop.
class FeedRequest final {
public:
    struct Limits {
        std::chrono::milliseconds time{15000}; ///< for all of it
        qint64 bytes = 1024 * 1024;            ///< of the answer, as it is read
    };

    /// The answer's bytes where it was complete, within the limits and of status 200; none
    /// otherwise.
    using Done = std::function<void(std::optional<QByteArray> body)>;

    FeedRequest(const QUrl& feed, const QByteArray& userAgent, const QSslConfiguration& security,
                Limits limits, Done done);
    ~FeedRequest();

private:
    void read();
    void finish();
    void end(std::optional<QByteArray> body);

    const Limits m_limits;
    Done m_done; ///< empty once it was called
    QByteArray m_body;
    QTimer m_patience;
    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply> m_reply;
};

} // namespace brindlecam
