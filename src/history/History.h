#pragma once

#include "base/Executor.h"
#include "history/ThumbnailCache.h"
#include "pictures/Thumbnail.h"
#include "platform/ClipboardContent.h"

#include <QByteArray>
#include <QDateTime>
#include <QImage>
#include <QString>
#include <QStringList>

#include <functional>
#include <mutex>
#include <optional>

namespace brindlecam {

/// Private copies of the latest captures, one file each in a folder of their own, so that they can
/// be shown and copied again after the clipboard has moved on. Nothing is kept in memory: every
/// call lists the folder. Only files whose names are ours count; links do not. Folder and files are
/// their owner's only. Safe from any thread; as slow as the disk. A folder that can't be listed is
/// empty.
class History final {
public:
    /// The wall clock, asked from the thread of each add().
    using Clock = std::function<QDateTime()>;

    struct Folders {
        QString entries;         ///< need not exist; the first add() makes it
        QString thumbnails = {}; ///< the same; empty: thumbnails are made anew each time
    };

    explicit History(Folders folders, Clock clock = &QDateTime::currentDateTime);

    /// "Brindlecam/Recientes" in the user's data folder; in the temporary folder when there is
    /// none.
    [[nodiscard]] static QString standardFolder();

    [[nodiscard]] const QString& folder() const { return m_folder; }
    [[nodiscard]] Folders folders() const { return {m_folder, m_thumbnails.folder()}; }

    /// Stores encoded bytes ("png" or "gif") under the current time, or right after the newest
    /// entry where that is dated later, and removes the oldest entries beyond 20. The entry appears
    /// whole or not at all; false: not at all. Of `picture`, which the bytes stand for, a thumbnail
    /// is kept, so that nobody has to decode the entry for it.
    bool add(const QByteArray& data, const QString& fileExtension,
             const QImage& picture = {}) const;

    /// Absolute paths of the entries, newest first.
    [[nodiscard]] QStringList items() const;

    /// Deletes every entry; returns how many were listed, even if some could not be deleted.
    int clear() const;
    /// Deletes this entry, if it is one, and its thumbnails, also of one that is gone already.
    void remove(const QString& item) const;

    /// A small picture of an entry, at most so many pixels on its longest side and at most as large
    /// as `most`, with the size of the whole picture; none when it can't be decoded. What had to be
    /// made for it is kept for the next time, which takes the disk's time: where `keeping` says, if
    /// at all.
    [[nodiscard]] std::optional<Thumbnail> thumbnail(const QString& item, QSize most,
                                                     const Executor& keeping = atOnce) const;
    /// The same, but none, too, where the entry would have to be decoded.
    [[nodiscard]] std::optional<Thumbnail> keptThumbnail(const QString& item, QSize most,
                                                         const Executor& keeping = atOnce) const;
    static constexpr int kThumbnailPixels = 640;

    /// The whole entry as it is put on the clipboard: an animation as a file and as bytes, a
    /// picture as its bytes and, where those look like one, as TIFF. None when it can't be read.
    [[nodiscard]] static std::optional<ClipboardContent> clipboardContent(const QString& item);

    /// For the start, on a thread that may wait for the disk: what earlier versions left readable
    /// for others is so no more, and what killed runs left half written goes.
    void tidy() const;

private:
    [[nodiscard]] QStringList fileNames() const;
    /// The entry's file as it was before anything was read.
    struct Item {
        QString path;
        ThumbnailCache::Stamp stamp;
    };

    static void atOnce(const std::function<void()>& work) { work(); }

    [[nodiscard]] QString path(const QString& name) const;

    /// The path of the new entry; none when it could not be written.
    [[nodiscard]] std::optional<QString> store(const QByteArray& data,
                                               const QString& fileExtension) const;
    void prune(const QString& added) const;

    [[nodiscard]] std::optional<Thumbnail> kept(const Item& item, QSize most,
                                                const Executor& keeping) const;
    [[nodiscard]] std::optional<Thumbnail> madeOf(const Thumbnail& large, const Item& item,
                                                  QSize most, const Executor& keeping) const;
    void keep(const Thumbnail& thumbnail, const Item& item, QSize most,
              const Executor& keeping) const;

    QString m_folder;
    ThumbnailCache m_thumbnails;
    Clock m_clock;
    mutable std::mutex m_adding;
};

} // namespace brindlecam
