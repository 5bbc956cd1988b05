#include "x11/ManagerByHand.h"

#include "x11/ThisDesktop.h"

#include <vector>

namespace brindlecam::test {

ManagerByHand::ManagerByHand()
    : m_connection(display())
{
    constexpr std::uint32_t kRedirect = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    const desktop::Owned<xcb_generic_error_t> error(xcb_request_check(
        m_connection.raw(),
        xcb_change_window_attributes_checked(m_connection.raw(), m_connection.root(),
                                             XCB_CW_EVENT_MASK, &kRedirect)));
    m_manages = !error;
}

void ManagerByHand::placeAsAsked()
{
    constexpr int kSynthetic = 0x80;
    m_connection.sync();
    while (
        const desktop::Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
        const int kind = event->response_type & ~kSynthetic;
        if (kind == XCB_CONFIGURE_REQUEST)
            configure(reinterpret_cast<const xcb_configure_request_event_t&>(*event));
        else if (kind == XCB_MAP_REQUEST)
            m_window = reinterpret_cast<const xcb_map_request_event_t&>(*event).window;
    }
    m_connection.sync();
}

void ManagerByHand::configure(const xcb_configure_request_event_t& request)
{
    const bool isFramed = m_frame && request.window == m_window;
    std::vector<std::uint32_t> place;
    std::vector<std::uint32_t> size;
    const std::uint16_t placeMask =
        request.value_mask & (XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y);
    const std::uint16_t sizeMask =
        request.value_mask & (XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT);
    if (placeMask & XCB_CONFIG_WINDOW_X)
        place.push_back(static_cast<std::uint32_t>(request.x));
    if (placeMask & XCB_CONFIG_WINDOW_Y)
        place.push_back(static_cast<std::uint32_t>(request.y));
    if (sizeMask & XCB_CONFIG_WINDOW_WIDTH)
        size.push_back(request.width);
    if (sizeMask & XCB_CONFIG_WINDOW_HEIGHT)
        size.push_back(request.height);
    const xcb_window_t placed = isFramed ? *m_frame : request.window;
    xcb_configure_window(m_connection.raw(), placed, placeMask, place.data());
    xcb_configure_window(m_connection.raw(), placed, sizeMask, size.data());
    if (isFramed)
        xcb_configure_window(m_connection.raw(), request.window, sizeMask, size.data());
}

void ManagerByHand::frame(const QRect& rect)
{
    m_frame = xcb_generate_id(m_connection.raw());
    const auto width = static_cast<std::uint16_t>(rect.width());
    const auto height = static_cast<std::uint16_t>(rect.height());
    // What else the window asks for is asked of whoever has its frame.
    constexpr std::uint32_t kRedirect = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_create_window(m_connection.raw(), XCB_COPY_FROM_PARENT, *m_frame, m_connection.root(),
                      static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                      width, height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &kRedirect);
    // Goes back to the root when this window manager ends.
    xcb_change_save_set(m_connection.raw(), XCB_SET_MODE_INSERT, *m_window);
    xcb_reparent_window(m_connection.raw(), *m_window, *m_frame, 0, 0);
    const std::uint32_t size[] = {width, height};
    xcb_configure_window(m_connection.raw(), *m_window,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    xcb_map_window(m_connection.raw(), *m_window);
    xcb_map_window(m_connection.raw(), *m_frame);
    m_connection.sync();
}

} // namespace brindlecam::test
