#include "platform/x11/windows/CompositorWatch.h"

#include <utility>

namespace brindlecam {

CompositorWatch::CompositorWatch()
    : m_owner("_NET_WM_CM_S0", [this] { m_listeners.tell(); })
{
}

void CompositorWatch::whenChanged(QObject* context, std::function<void()> changed)
{
    m_listeners.add(context, std::move(changed));
}

} // namespace brindlecam
