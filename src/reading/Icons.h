#pragma once

#include "reading/StopRequest.h"

#include <QImage>
#include <QRect>

#include <vector>

namespace brindlecam {

/// Icons in front of words, which the engine would read as letters. Any thread.
namespace Icons {

struct Found {
    std::vector<QRect> certain;  ///< to be erased
    std::vector<QRect> possible; ///< what is read there is doubtful
};

/// Looks for icons among the spots of a picture, in pixels; `factor` is how much it was enlarged.
[[nodiscard]] Found among(const std::vector<QRect>& spots, double factor, StopRequest stop = {});

/// Paints white over these places of an 8-bit grey picture.
void erase(QImage& grey, const std::vector<QRect>& places);

} // namespace Icons

} // namespace brindlecam
