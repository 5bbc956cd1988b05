#pragma once

#include "settings/ReleaseFeed.h"

#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

namespace brindlecam {

/// Asks by a program that ends with the answer, so that neither network nor TLS stay in this one's
/// memory. Ends it when this goes.
class FeedProcess final : public ReleaseFeed {
public:
    /// `program` asks `feed`, if there is one, on behalf of `userAgent`, and is ended when it takes
    /// longer than it should.
    FeedProcess(QString program, std::optional<QUrl> feed, QString userAgent,
                std::chrono::milliseconds patience = std::chrono::seconds(20));

    /// The one that lies beside this program.
    [[nodiscard]] static QString standardProgram();

    [[nodiscard]] bool exists() const override { return m_feed.has_value(); }
    void fetch(QObject* context, std::function<void(std::optional<QByteArray>)> done) override;

private:
    const QString m_program;
    const std::optional<QUrl> m_feed;
    const QString m_userAgent;
    const std::chrono::milliseconds m_patience;
};

} // namespace brindlecam
