#include "desktop/support/x11/ClipboardManager.h"

#include "desktop/support/x11/ClipboardReader.h"

namespace brindlecam::desktop {

ClipboardManager::ClipboardManager(const QString& display)
    : m_display(display)
    , m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    xcb_create_window(m_connection.raw(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(m_connection.raw(), m_window, m_connection.atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    m_connection.sync();
}

void ClipboardManager::serve()
{
    m_connection.sync();
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
        if ((event->response_type & 0x7f) == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
    }
}

void ClipboardManager::answer(const xcb_selection_request_event_t& request)
{
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    if (request.target == m_connection.atom("SAVE_TARGETS")) {
        m_kept = ClipboardReader(m_display).read("image/png").value_or(QByteArray());
        xcb_set_selection_owner(m_connection.raw(), m_window, m_connection.atom("CLIPBOARD"),
                                XCB_CURRENT_TIME);
        notice.property = request.property;
    }
    xcb_send_event(m_connection.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notice));
    m_connection.sync();
}

} // namespace brindlecam::desktop
