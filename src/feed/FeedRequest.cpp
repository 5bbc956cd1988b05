#include "feed/FeedRequest.h"

#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace brindlecam {

FeedRequest::FeedRequest(const QUrl& feed, const QByteArray& userAgent,
                         const QSslConfiguration& security, Limits limits, Done done)
    : m_limits(limits)
    , m_done(std::move(done))
{
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { end(std::nullopt); });
    m_patience.start(m_limits.time);
    if (feed.scheme() != QLatin1String("https")) {
        m_patience.start(0);
        return;
    }
    QNetworkRequest request(feed);
    request.setSslConfiguration(security);
    request.setRawHeader("User-Agent", userAgent);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    m_reply.reset(m_network.get(request));
    // Else the network's own thread takes in whatever comes while this one is busy.
    m_reply->setReadBufferSize(m_limits.bytes + 1);
    QObject::connect(m_reply.get(), &QNetworkReply::readyRead, m_reply.get(), [this] { read(); });
    QObject::connect(m_reply.get(), &QNetworkReply::finished, m_reply.get(), [this] { finish(); });
}

FeedRequest::~FeedRequest() = default;

// As it comes, so that no more is ever held than is allowed.
void FeedRequest::read()
{
    m_body += m_reply->read(m_limits.bytes + 1 - m_body.size());
    if (m_body.size() > m_limits.bytes)
        end(std::nullopt);
}

void FeedRequest::finish()
{
    constexpr int kOk = 200;
    read();
    const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    const bool complete = m_reply->error() == QNetworkReply::NoError && status.toInt() == kOk;
    end(complete && !m_body.isEmpty() ? std::optional(m_body) : std::nullopt);
}

void FeedRequest::end(std::optional<QByteArray> body)
{
    if (const Done done = std::exchange(m_done, {}))
        done(std::move(body));
}

} // namespace brindlecam
