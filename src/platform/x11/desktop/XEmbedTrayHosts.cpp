#include "platform/x11/desktop/XEmbedTrayHosts.h"

#include <utility>

namespace brindlecam {

XEmbedTrayHosts::XEmbedTrayHosts()
    : m_tray("_NET_SYSTEM_TRAY_S0", [this] { m_listeners.tell(); })
{
}

void XEmbedTrayHosts::whenChanged(QObject* context, std::function<void()> changed)
{
    m_listeners.add(context, std::move(changed));
}

} // namespace brindlecam
