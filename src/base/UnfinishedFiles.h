#pragma once

#include <QDateTime>
#include <QString>

namespace brindlecam {

/// The files that writeWhole() writes into before they get their final names, and what becomes of
/// those that a killed program has left. Their names are nobody else's: hidden, and the same for
/// every final name.
namespace UnfinishedFiles {

/// ".brindlecam-0kq3f81tz5xw2.part"; another with every call.
[[nodiscard]] QString newName();

[[nodiscard]] bool isName(const QString& name);

/// Removes from the folder the unfinished files of this user that nobody has written into for an
/// hour before `now`. Links and folders stay, whatever they are called. Any thread; takes as long
/// as the disk does.
void removeAbandoned(const QString& folder, const QDateTime& now);

/// Removes all of them from the folder, old or not: whoever still writes one fails.
void removeAll(const QString& folder);

} // namespace UnfinishedFiles

} // namespace brindlecam
