#pragma once

#include "Picture.h"

#include "desktop/support/Patience.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace brindlecam::soak {

/// A folder into which the program puts pictures: each must come, whole and right, and then stay as
/// it is. Names are expected to grow with time.
class KeptFiles final {
public:
    /// `most`: the oldest beyond so many may go.
    KeptFiles(QString folder, QString what, std::optional<int> most = {});

    [[nodiscard]] const QString& folder() const { return m_folder; }
    /// They have been brought elsewhere, and are watched there.
    void follow(const QString& folder) { m_folder = folder; }

    /// Must be there when verify() is called next.
    void await(const std::shared_ptr<Picture>& picture) { m_awaited.push_back(picture); }
    /// May be there or not: the program was killed meanwhile.
    void allow(const std::shared_ptr<Picture>& picture) { m_allowed.push_back(picture); }
    /// The program removes this file, whose full path it is, or all of them: they must be gone when
    /// verify() is called next.
    void goes(const QString& path);
    void allGo();
    /// Somebody has emptied the folder.
    void forgetAll() { m_known.clear(); }
    /// Whatever is there now is as it should be.
    void acknowledge() { m_known = present(); }

    /// Waits for what is awaited. Throws Failure when something is missing, wrong, too much, or not
    /// as it was.
    void verify(int patience = desktop::kPatience);
    [[nodiscard]] qsizetype count() const { return m_known.size(); }
    /// Full paths of those that were there when they were verified last.
    [[nodiscard]] QStringList newestFirst() const;
    /// How many are there right now.
    [[nodiscard]] qsizetype filesNow() const { return present().size(); }

private:
    /// By which a file that is written anew is told from the one before.
    struct Stamp {
        qint64 bytes = 0;
        qint64 changed = 0; ///< ns since 1970
        quint64 node = 0;
        bool operator==(const Stamp&) const = default;
    };
    using Files = QMap<QString, Stamp>;

    [[nodiscard]] Files present() const;
    /// Names of files that were not there or are others now, the oldest first.
    [[nodiscard]] QStringList news(const Files& now) const;
    /// So many may be there, `m_most` given.
    [[nodiscard]] qsizetype mostNow() const;
    [[nodiscard]] QStringList leftOf(const Files& now) const;
    void verifyNews(const QStringList& names) const;
    void verifyGone(const Files& now, const QStringList& news) const;

    QString m_folder;
    const QString m_what;
    const std::optional<int> m_most;
    Files m_known;
    std::vector<std::shared_ptr<Picture>> m_awaited;
    std::vector<std::shared_ptr<Picture>> m_allowed;
    QStringList m_going; ///< names
};

} // namespace brindlecam::soak
