#pragma once

#include "reading/StopRequest.h"

#include <QImage>
#include <QRect>

#include <vector>

namespace brindlecam {

/// Areas too busy to be text of any size: grain, dithering, scattered dots. The engine finds no
/// words in them, but on a large page it looks for minutes. Only there they are sought: where they
/// are vast, three quarters of a megapixel together at least, and a margin around text stays. A
/// crop with less of them is never touched. Any thread.
namespace Noise {

/// Paints white over such areas of an 8-bit grey picture, dark on white, that was not enlarged.
/// `spots` are the picture's. Answers whether there were any.
[[nodiscard]] bool erase(QImage& grey, const std::vector<QRect>& spots, StopRequest stop = {});

} // namespace Noise

} // namespace brindlecam
