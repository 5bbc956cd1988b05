#pragma once

#include "reading/BackgroundMap.h"
#include "reading/StopRequest.h"

#include <QImage>

namespace brindlecam {

/// A picture as dark text on white, whatever colours it had.
struct Flattened {
    QImage grey;               ///< 8-bit grey, as large as the picture
    BackgroundMap backgrounds; ///< what lay behind
};

/// Finds the backgrounds of a picture and measures how far every other pixel stands out from the
/// nearest of them. Its resolution is taken as one pixel per pixel. Throws std::bad_alloc. Any
/// thread.
[[nodiscard]] Flattened flatten(const QImage& picture, StopRequest stop = {});

} // namespace brindlecam
