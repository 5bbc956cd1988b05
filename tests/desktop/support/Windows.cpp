#include "desktop/support/Windows.h"

namespace brindlecam::desktop {

std::vector<SeenWindow> Windows::shown(qint64 pid, Role role) const
{
    std::vector<SeenWindow> found = shown(pid);
    std::erase_if(found, [role](const SeenWindow& window) { return window.role != role; });
    return found;
}

} // namespace brindlecam::desktop
