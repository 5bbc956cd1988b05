#pragma once

#include <QImage>
#include <QRect>

namespace brindlecam {

/// The part of a picture inside `pixels` (clipped to it), without copying: the result shares the
/// picture's memory and keeps it alive (pictures of other than 32 bits are copied). Null when
/// nothing is left. Only for pictures that nobody paints on any more.
[[nodiscard]] QImage croppedView(const QImage& picture, const QRect& pixels);

} // namespace brindlecam
