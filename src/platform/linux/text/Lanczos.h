#pragma once

#include <QImage>

namespace brindlecam {

/// Enlarges an 8-bit grey picture by a factor of 1 or more with a Lanczos kernel of three lobes,
/// which keeps thin strokes dark. The size is rounded to whole pixels. Any thread.
[[nodiscard]] QImage enlarged(const QImage& grey, double factor);

} // namespace brindlecam
