#include "preferences/Config.h"

namespace brindlecam::Config {

std::optional<QUrl> updateFeedUrl()
{
    const QString host = QStringLiteral(BRINDLECAM_WEB_HOST);
    if (host.isEmpty())
        return std::nullopt;
    QUrl feed;
    feed.setScheme(QStringLiteral("https"));
    feed.setHost(host);
    feed.setPath(QStringLiteral("/version.json"));
    return feed;
}

} // namespace brindlecam::Config
