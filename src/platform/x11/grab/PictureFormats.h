#pragma once

#include "platform/x11/connection/RootAccess.h"

#include <xcb/render.h>

#include <optional>
#include <unordered_map>

namespace brindlecam {

/// How the Render extension sees the pixels of a visual.
struct PictureFormat {
    xcb_render_pictformat_t id = XCB_NONE;
    bool blends = false; ///< has an alpha channel, its colours premultiplied
};

/// The formats of a server's visuals. Any thread.
class PictureFormats final {
public:
    /// None known where the server lacks the extension. Round trips, on the connection's thread.
    explicit PictureFormats(const x11::RootAccess& access);

    [[nodiscard]] std::optional<PictureFormat> of(xcb_visualid_t visual) const;

private:
    std::unordered_map<xcb_visualid_t, PictureFormat> m_formats;
};

} // namespace brindlecam
