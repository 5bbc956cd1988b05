#pragma once

#include <QImage>

namespace brindlecam {

/// Whether no pixel lets anything shine through. `image` has 32 bits per pixel, or no alpha at all.
[[nodiscard]] bool isOpaque(const QImage& image);

/// The same pixels in one of two formats an encoder can read word by word: RGB32 when all of them
/// are opaque (the alpha byte is then meaningless), else ARGB32. Pixels that are already laid out
/// so are borrowed, not copied: `image` must outlive the result.
[[nodiscard]] QImage plainPicture(const QImage& image);

} // namespace brindlecam
