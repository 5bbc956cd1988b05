#include "platform/linux/x11/X11ServerTime.h"

#include "platform/linux/x11/X11.h"

namespace brindlecam::x11 {

xcb_timestamp_t serverTime()
{
    const OwnConnection own(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(own.get()))
        return XCB_CURRENT_TIME;
    const xcb_window_t window = xcb_generate_id(own.get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(own.get(), XCB_COPY_FROM_PARENT, window, root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    xcb_change_property(own.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, 0, nullptr);
    xcb_flush(own.get());
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(own.get())}) {
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
    }
    return XCB_CURRENT_TIME;
}

} // namespace brindlecam::x11
