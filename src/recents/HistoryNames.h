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
[[nodiscard]] QString nameFor(const QDateTime& localTime, const QString& fileExtension);

/// Whether a file of this name is an entry: it ends in exactly ".png" or ".gif".
[[nodiscard]] bool isEntry(const QString& name);

/// Whether a file of this name is what a killed program left of an entry it was writing.
[[nodiscard]] bool isUnfinished(const QString& name);

/// The entries among these names, newest first.
[[nodiscard]] QStringList entries(const QStringList& names);

/// What must go so that only the newest kMostEntries stay; `entries` are newest first.
[[nodiscard]] QStringList surplus(const QStringList& entries);

} // namespace HistoryNames

} // namespace brindlecam
