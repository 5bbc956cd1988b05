#include "feed/Fetching.h"

#include "feed/FeedRequest.h"

#include <QCoreApplication>

#include <cstdio>

namespace brindlecam {

int printAnswer(const QUrl& feed, const QByteArray& userAgent, const QSslConfiguration& security)
{
    const FeedRequest request(feed, userAgent, security, {}, [](const auto& body) {
        const auto bytes = static_cast<std::size_t>(body.value_or(QByteArray()).size());
        const bool told = body && std::fwrite(body->constData(), 1, bytes, stdout) == bytes;
        QCoreApplication::exit(told ? 0 : 1);
    });
    return QCoreApplication::exec();
}

} // namespace brindlecam
