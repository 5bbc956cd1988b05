#include "platform/x11/desktop/XEmbedTrayHosts.h"

#include <utility>

namespace brindlecam {

XEmbedTrayHosts::XEmbedTrayHosts()
    : m_tray("_NET_SYSTEM_TRAY_S0", [this] {
        if (m_changed)
            m_changed();
    })
{
}

void XEmbedTrayHosts::setOnChange(std::function<void()> changed)
{
    m_changed = std::move(changed);
}

} // namespace brindlecam
