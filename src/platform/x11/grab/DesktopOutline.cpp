#include "platform/x11/grab/DesktopOutline.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace brindlecam {

bool DesktopOutline::shows(const QRect& native) const
{
    if (native.isEmpty() || !desktop.contains(native))
        return false;
    return screens.empty() ||
           std::any_of(screens.begin(), screens.end(),
                       [&native](const QRect& screen) { return screen.intersects(native); });
}

OutlineQuestion::OutlineQuestion(const x11::RootAccess& access, bool knowsMonitors)
    : m_access(access)
    , m_desktop(xcb_get_geometry(access.connection, access.root))
{
    if (knowsMonitors)
        m_monitors = xcb_randr_get_monitors(access.connection, access.root, 1);
}

DesktopOutline OutlineQuestion::answer() const
{
    DesktopOutline outline;
    const auto geometry = m_access.reply<xcb_get_geometry_reply_t>(m_desktop.sequence);
    if (geometry)
        outline.desktop = QRect(0, 0, geometry->width, geometry->height);
    if (!m_monitors)
        return outline;
    const auto monitors = m_access.reply<xcb_randr_get_monitors_reply_t>(m_monitors->sequence);
    if (!monitors)
        return outline;
    for (auto item = xcb_randr_get_monitors_monitors_iterator(monitors.get()); item.rem > 0;
         xcb_randr_monitor_info_next(&item))
        outline.screens.emplace_back(item.data->x, item.data->y, item.data->width,
                                     item.data->height);
    return outline;
}

bool OutlineQuestion::canTellMonitors(const x11::RootAccess& access)
{
    const auto* const extension = xcb_get_extension_data(access.connection, &xcb_randr_id);
    if (!extension || !extension->present)
        return false;
    const auto version = access.reply<xcb_randr_query_version_reply_t>(
        xcb_randr_query_version(access.connection, 1, 5).sequence);
    using Version = std::pair<std::uint32_t, std::uint32_t>;
    return version && Version(version->major_version, version->minor_version) >= Version(1, 5);
}

} // namespace brindlecam
