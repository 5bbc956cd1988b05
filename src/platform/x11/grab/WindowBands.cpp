#include "platform/x11/grab/WindowBands.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/PixelBuffer.h"

namespace brindlecam {

namespace {

void ignoreError(xcb_void_cookie_t cookie)
{
    xcb_discard_reply(x11::connection(), cookie.sequence);
}

} // namespace

WindowBands::WindowBands(const PixelBuffer& ring, xcb_window_t window, int width)
    : m_ring(ring)
    , m_window(window)
    , m_width(width)
    , m_context(xcb_generate_id(x11::connection()))
{
    // A window that is gone fails the bands, too; these errors say nothing more.
    ignoreError(xcb_create_gc_checked(x11::connection(), m_context, window, 0, nullptr));
}

WindowBands::~WindowBands()
{
    for (const Request& request : m_underWay) {
        xcb_discard_reply(x11::connection(), request.put.sequence);
        xcb_discard_reply(x11::connection(), request.after.sequence);
    }
    ignoreError(xcb_free_gc_checked(x11::connection(), m_context));
    send();
}

void WindowBands::ask(const Band& band)
{
    const auto width = static_cast<std::uint16_t>(m_width);
    const auto rows = static_cast<std::uint16_t>(band.rows);
    const auto put = xcb_shm_put_image_checked(
        x11::connection(), m_window, m_context, width, rows, 0, 0, width, rows, 0,
        static_cast<std::int16_t>(band.firstRow), x11::screen().root_depth,
        XCB_IMAGE_FORMAT_Z_PIXMAP, 0, m_ring.segment(), static_cast<std::uint32_t>(band.slot));
    m_underWay.push_back({put, xcb_get_input_focus(x11::connection())});
}

void WindowBands::send()
{
    xcb_flush(x11::connection());
}

bool WindowBands::await()
{
    const Request request = m_underWay.front();
    m_underWay.pop_front();
    const x11::Owned<xcb_get_input_focus_reply_t> through(
        xcb_get_input_focus_reply(x11::connection(), request.after, nullptr));
    const x11::Owned<xcb_generic_error_t> error(xcb_request_check(x11::connection(), request.put));
    return through && !error;
}

} // namespace brindlecam
