#include "platform/x11/grab/PictureFormats.h"

#include <unordered_set>

namespace brindlecam {

namespace {

bool hasAlpha(const xcb_render_pictforminfo_t& format)
{
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.direct.alpha_mask != 0;
}

} // namespace

PictureFormats::PictureFormats(const x11::RootAccess& access)
{
    const auto* const extension = xcb_get_extension_data(access.connection, &xcb_render_id);
    if (!extension || !extension->present)
        return;
    const auto version = access.reply<xcb_render_query_version_reply_t>(
        xcb_render_query_version(access.connection, 0, 6).sequence);
    const auto reply = access.reply<xcb_render_query_pict_formats_reply_t>(
        xcb_render_query_pict_formats(access.connection).sequence);
    if (!version || !reply)
        return;
    std::unordered_set<xcb_render_pictformat_t> blending;
    for (auto format = xcb_render_query_pict_formats_formats_iterator(reply.get()); format.rem > 0;
         xcb_render_pictforminfo_next(&format)) {
        if (hasAlpha(*format.data))
            blending.insert(format.data->id);
    }
    for (auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get()); screen.rem > 0;
         xcb_render_pictscreen_next(&screen)) {
        for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem > 0;
             xcb_render_pictdepth_next(&depth)) {
            for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem > 0;
                 xcb_render_pictvisual_next(&visual)) {
                const auto format = visual.data->format;
                m_formats[visual.data->visual] = {format, blending.count(format) > 0};
            }
        }
    }
}

std::optional<PictureFormat> PictureFormats::of(xcb_visualid_t visual) const
{
    const auto found = m_formats.find(visual);
    return found == m_formats.end() ? std::nullopt : std::optional(found->second);
}

} // namespace brindlecam
