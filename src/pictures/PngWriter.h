#pragma once

#include "pictures/ZlibStream.h"

#include <QByteArray>
#include <QImage>

#include <functional>

namespace brindlecam {

/// Our PNG encoder: own row-filter rule and palette reduction. Safe from any thread; several may
/// encode at once.
namespace PngWriter {

/// Quick for the clipboard, where somebody waits; small for files and the history.
using Effort = ZlibStream::Effort;

struct Options {
    Effort effort = Effort::quick;
    int dotsPerMetre = 2835; ///< 72 dpi: one pixel per point
    /// Asked now and then while encoding; true ends the work early with an empty result.
    std::function<bool()> cancelled;
};

/// The picture as PNG bytes. Opaque pictures are written without alpha; up to 256 colours become a
/// palette. Empty for a null image, when memory runs out, or when cancelled.
[[nodiscard]] QByteArray encode(const QImage& image, const Options& options);

} // namespace PngWriter

} // namespace brindlecam
