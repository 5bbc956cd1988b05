#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QIODevice;

namespace brindlecam {

/// Who may read a file that is written.
enum class Readers {
    usual,     ///< whoever may read the file it replaces; else as the umask says
    ownerOnly, ///< its owner and nobody else, whatever the umask and whatever was there before
};

/// Writes a file whole or not at all: a file beside the final one (base/UnfinishedFiles.h) takes
/// the bytes and is renamed when the disk has them all, so that a full disk leaves neither half a
/// file nor an empty one. The folder must exist. A link is replaced, not followed; what is neither
/// a file nor writable is left as it is. False when it failed: what was there before then stays.
/// Any thread.
///
/// Not QSaveFile: that of Qt 6.4 renames although its last buffer met a full disk (QTBUG-75077; in
/// 6.11 it does not), and a newer one would still follow links.
[[nodiscard]] bool writeWhole(const QString& path, const QByteArray& bytes,
                              Readers readers = Readers::usual);

/// Takes the right to read a file or folder from everybody but its owner, whose own rights stay.
void keepFromOthers(const QString& path);

/// Makes a folder that only its owner may look into, whatever the umask, unless there is something
/// of that name. Those above it are made as the umask says.
void makeOwnFolder(const QString& path);

/// Everything from here to the end of an open file, or nothing when reading fails on the way. Open
/// it unbuffered: a buffer hides the failure. Any thread.
[[nodiscard]] std::optional<QByteArray> readWhole(QIODevice& file);

} // namespace brindlecam
