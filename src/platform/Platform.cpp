#include "platform/Platform.h"

#include "platform/null/NullPlatform.h"

namespace brindlecam {

std::optional<Error> preparePlatform()
{
    return std::nullopt;
}

Platform makePlatform()
{
    return makeNullPlatform();
}

} // namespace brindlecam
