#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <mutex>

namespace brindlecam {

/// Private copies of the latest captures, one file each in a folder of their own, so that they can
/// be shown and copied again after the clipboard has moved on. Nothing is kept in memory: every
/// call lists the folder. Only files whose names are ours count; links do not. Folder and files are
/// their owner's only. Safe from any thread. A folder that can't be listed is empty.
class History final {
public:
    /// The wall clock, asked from the thread of each add().
    using Clock = std::function<QDateTime()>;

    /// The folder need not exist; the first add() makes it.
    explicit History(QString folder, Clock clock = &QDateTime::currentDateTime);

    /// "Brindlecam/Recientes" in the user's data folder; in the temporary folder when there is
    /// none.
    [[nodiscard]] static QString standardFolder();

    [[nodiscard]] const QString& folder() const { return m_folder; }

    /// Stores encoded bytes ("png" or "gif") under the current time, or right after the newest
    /// entry where that is dated later, and removes the oldest entries beyond 20. The entry appears
    /// whole or not at all; false: not at all.
    bool add(const QByteArray& data, const QString& fileExtension) const;

    /// Absolute paths of the entries, newest first.
    [[nodiscard]] QStringList items() const;

    /// Deletes every entry; returns how many were listed, even if some could not be deleted.
    int clear() const;

    /// For the start, on a thread that may wait for the disk: what earlier versions left readable
    /// for others is so no more, and what killed runs left half written goes.
    void tidy() const;

private:
    void makeFolder() const;
    [[nodiscard]] QStringList fileNames() const;
    [[nodiscard]] QString path(const QString& name) const;

    QString m_folder;
    Clock m_clock;
    mutable std::mutex m_adding;
};

} // namespace brindlecam
