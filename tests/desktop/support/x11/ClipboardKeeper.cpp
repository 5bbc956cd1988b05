#include "desktop/support/x11/ClipboardKeeper.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/ClipboardReader.h"

#include <QDeadlineTimer>

#include <poll.h>

namespace brindlecam::desktop {

namespace {

Owned<xcb_generic_event_t> awaitRequest(const Connection& connection)
{
    const QDeadlineTimer deadline(2 * kPatience);
    while (!deadline.hasExpired()) {
        while (Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection.raw())}) {
            if ((event->response_type & 0x7f) == XCB_SELECTION_REQUEST)
                return event;
        }
        if (xcb_connection_has_error(connection.raw()) != 0)
            break;
        pollfd readable{xcb_get_file_descriptor(connection.raw()), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(deadline.remainingTime()));
    }
    return nullptr;
}

} // namespace

ClipboardKeeper::ClipboardKeeper(const QString& display)
    : m_thread([this, display] { serve(display); })
{
    if (!waitUntil([this] { return m_owns.load(); }))
        qFatal("nobody keeps the clipboard");
}

ClipboardKeeper::~ClipboardKeeper()
{
    if (m_thread.joinable())
        m_thread.join();
}

std::optional<QByteArray> ClipboardKeeper::kept()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_kept;
}

void ClipboardKeeper::serve(const QString& display)
{
    const Connection connection(display);
    const xcb_window_t window = xcb_generate_id(connection.raw());
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection.raw(), window, connection.atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    connection.sync();
    m_owns = true;
    const auto event = awaitRequest(connection);
    if (!event)
        return;
    const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
    if (request.target == connection.atom("SAVE_TARGETS"))
        m_kept = ClipboardReader(display).read("image/png");
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = request.property;
    xcb_send_event(connection.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notice));
    connection.sync();
}

} // namespace brindlecam::desktop
