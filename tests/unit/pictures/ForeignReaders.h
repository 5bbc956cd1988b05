#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace brindlecam::test {

/// Other people's decoders and checkers: what we write is judged by them.
namespace ForeignReaders {

/// The picture as libpng reads it, as ARGB32; null when it refuses.
[[nodiscard]] QImage decodedByLibpng(const QByteArray& png);

/// Bytes of libpng's own file at its default level 6 with all filters: the yardstick for sizes.
[[nodiscard]] qsizetype libpngSize(const QImage& image);

/// What `program file` prints, with the bytes in the file; starts with "exit N: " unless it exits
/// with 0.
[[nodiscard]] QString report(const QString& program, const QByteArray& bytes);

} // namespace ForeignReaders

} // namespace brindlecam::test
