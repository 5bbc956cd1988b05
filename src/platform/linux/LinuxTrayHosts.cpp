#include "platform/linux/LinuxTrayHosts.h"

#include <algorithm>
#include <utility>

namespace brindlecam {

LinuxTrayHosts::LinuxTrayHosts(std::vector<std::unique_ptr<TrayHosts>> kinds)
    : m_kinds(std::move(kinds))
{
}

bool LinuxTrayHosts::available() const
{
    return std::any_of(m_kinds.begin(), m_kinds.end(),
                       [](const auto& kind) { return kind->available(); });
}

void LinuxTrayHosts::whenChanged(QObject* context, std::function<void()> changed)
{
    for (const auto& kind : m_kinds)
        kind->whenChanged(context, changed);
}

} // namespace brindlecam
