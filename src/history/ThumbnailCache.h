#pragma once

#include "pictures/Thumbnail.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace brindlecam {

/// Small copies of the history's pictures in a folder that may go at any time: one PNG file for
/// each entry and size that is asked for, until the entry goes. The name of a file tells of which
/// entry it is, how large that picture really is, and how large the copy may be. It also tells what
/// state of the entry's file it was made of: in another state it is worthless. Files of other names
/// are nobody's business. Safe from any thread, and from several copies of the program. What can't
/// be read or written is not there.
class ThumbnailCache final {
public:
    /// No folder: nothing is ever kept.
    explicit ThumbnailCache(QString folder);

    /// In the program's own cache folder; empty when there is none.
    [[nodiscard]] static QString standardFolder();

    [[nodiscard]] const QString& folder() const { return m_folder; }

    /// Which state of an entry's file a thumbnail is of: ask before the file is read.
    struct Stamp {
        qint64 bytes = 0;
        qint64 milliseconds = 0; ///< since 1970, when it was written

        bool operator==(const Stamp&) const = default;
    };
    /// None when there is no such file.
    [[nodiscard]] static std::optional<Stamp> stampOf(const QString& entry);

    /// What is kept of the entry at `entry` (a path) for this size, if it is of this state.
    [[nodiscard]] std::optional<Thumbnail> load(const QString& entry, const Stamp& stamp,
                                                QSize most) const;
    /// Keeps one that is at most as large as `most`, in place of any earlier one, unless the
    /// entry's file is in another state by now, or gone: what the user has removed leaves no
    /// picture behind.
    void store(const QString& entry, const Stamp& stamp, QSize most,
               const Thumbnail& thumbnail) const;
    /// Removes those of all but these entries.
    void prune(const QStringList& entries) const;
    /// Removes all of them, with what is half written.
    void clear() const;

private:
    [[nodiscard]] QStringList fileNames() const;

    QString m_folder;
};

} // namespace brindlecam
