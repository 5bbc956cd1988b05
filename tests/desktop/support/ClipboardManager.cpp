#include "desktop/support/ClipboardManager.h"

#include "desktop/support/Patience.h"

namespace brindlecam::desktop {

std::optional<QByteArray> ClipboardManager::handedOver()
{
    if (!waitUntil([this] { return wasHanded(); }) || kept().isEmpty())
        return std::nullopt;
    return kept().back();
}

} // namespace brindlecam::desktop
