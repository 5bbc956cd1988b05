#pragma once

#include "reading/StopRequest.h"

#include <QImage>

namespace brindlecam {

/// Enlarges an 8-bit grey picture by a factor of 1 or more with a Lanczos kernel of three lobes,
/// which keeps thin strokes dark. The size is rounded to whole pixels. Throws
/// std::bad_alloc. Any thread.
[[nodiscard]] QImage enlarged(const QImage& grey, double factor, StopRequest stop = {});

} // namespace brindlecam
