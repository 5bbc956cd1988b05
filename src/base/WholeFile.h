#pragma once

#include <QByteArray>
#include <QString>

namespace brindlecam {

/// Writes a file whole or not at all: a file beside the final one takes the bytes and is renamed
/// when all are there, so that a full disk leaves neither half a file nor an empty one. The folder
/// must exist. False when it failed; what was there before then stays. Any thread.
[[nodiscard]] bool writeWhole(const QString& path, const QByteArray& bytes);

} // namespace brindlecam
