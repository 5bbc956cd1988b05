#include "platform/Platform.h"

#include "platform/linux/LinuxPlatform.h"

namespace brindlecam {

std::optional<Error> preparePlatform()
{
    return LinuxPlatform::prepare();
}

Platform makePlatform()
{
    return LinuxPlatform::make();
}

} // namespace brindlecam
