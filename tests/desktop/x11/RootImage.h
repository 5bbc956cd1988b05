#pragma once

#include <QImage>
#include <QRect>

namespace brindlecam::test {

/// What the screen shows there once the server is through with everything asked for so far; native
/// pixels. Null when the server refuses.
[[nodiscard]] QImage rootImage(const QRect& rect);

} // namespace brindlecam::test
