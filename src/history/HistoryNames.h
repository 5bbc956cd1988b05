#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace brindlecam {

/// Names of history entries: the capture's local time down to the millisecond, then what it holds,
/// so that order by name is order in time. Pure; nothing here touches a disk.
namespace HistoryNames {

inline constexpr int kMostEntries = 20;

/// "20260314-092653-589.png" for the extension "png".
[[nodiscard]] QString nameFor(const QDateTime& time, const QString& fileExtension);

/// The name for a capture taken now, by the local clock. It comes after all `entries`, which are
/// newest first, even where they are dated in the future: by a millisecond then.
[[nodiscard]] QString nextName(const QDateTime& now, const QStringList& entries,
                               const QString& fileExtension);

/// Whether a file of this name is an entry: exactly a name that nameFor() gives for "png" or "gif".
[[nodiscard]] bool isEntry(const QString& name);

/// The entries among these names, newest first.
[[nodiscard]] QStringList entries(const QStringList& names);

/// What must go so that only the newest kMostEntries stay; `entries` are newest first. `added`
/// stays in any case.
[[nodiscard]] QStringList surplus(QStringList entries, const QString& added);

} // namespace HistoryNames

} // namespace brindlecam
