#include "platform/RegionFrames.h"

namespace brindlecam {

QSize RegionOptions::frameSize(QSize region) const
{
    return size.isEmpty() ? region : size.boundedTo(region);
}

} // namespace brindlecam
