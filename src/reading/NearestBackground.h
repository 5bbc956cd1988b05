#pragma once

#include "reading/StopRequest.h"

#include <QImage>

#include <vector>

namespace brindlecam {

/// Lets the chosen regions of a picture grow over everything else, step by step in the four
/// directions.
namespace NearestBackground {

/// `labels` names the background of each pixel, row by row, or is negative; afterwards it names the
/// nearest one everywhere. `colours` is the 32-bit picture; afterwards each pixel has the colour of
/// the background pixel nearest to it. Without a background both stay as they are.
void spread(std::vector<int>& labels, QImage& colours, StopRequest stop = {});

} // namespace NearestBackground

} // namespace brindlecam
