#include "desktop/support/x11/X11ClipboardManager.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/X11Clipboard.h"

#include <xcb/xfixes.h>

#include <poll.h>

namespace brindlecam::desktop {

namespace {

constexpr int kUntilNextLook = 20; // milliseconds, for the end of the thread only

/// The number of the event that tells of a new owner.
int askForNewOwners(const Connection& connection)
{
    const Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection.raw(), xcb_xfixes_query_version(connection.raw(), 5, 0), nullptr));
    if (!version)
        qFatal("the X server tells nothing about selections");
    xcb_xfixes_select_selection_input(connection.raw(), connection.root(),
                                      connection.atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    return xcb_get_extension_data(connection.raw(), &xcb_xfixes_id)->first_event +
           XCB_XFIXES_SELECTION_NOTIFY;
}

/// A window to own selections with.
xcb_window_t makeWindow(const Connection& connection)
{
    const xcb_window_t window = xcb_generate_id(connection.raw());
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

void own(const Connection& connection, xcb_window_t window, const QByteArray& selection)
{
    xcb_set_selection_owner(connection.raw(), window, connection.atom(selection), XCB_CURRENT_TIME);
}

} // namespace

X11ClipboardManager::X11ClipboardManager(const QString& display, KeepsBy way)
    : m_thread([this, display, way] { serve(display, way); })
{
    if (!waitUntil([this] { return m_serves.load(); }))
        qFatal("nobody keeps the clipboard");
}

X11ClipboardManager::~X11ClipboardManager()
{
    m_ends = true;
    m_thread.join();
}

QByteArrayList X11ClipboardManager::kept() const
{
    const std::lock_guard lock(m_mutex);
    return m_kept;
}

void X11ClipboardManager::serve(const QString& display, KeepsBy way)
{
    const Connection connection(display);
    X11Clipboard clipboard(display);
    const xcb_window_t window = makeWindow(connection);
    int newOwner = -1;
    if (way == KeepsBy::looking)
        newOwner = askForNewOwners(connection);
    else
        own(connection, window, "CLIPBOARD_MANAGER");
    connection.sync();
    m_serves = true;
    while (!m_ends && xcb_connection_has_error(connection.raw()) == 0) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection.raw())}) {
            const int type = event->response_type & 0x7f;
            if (type == newOwner)
                keep(clipboard);
            else if (type == XCB_SELECTION_REQUEST)
                answer(connection, window, clipboard,
                       reinterpret_cast<const xcb_selection_request_event_t&>(*event));
        }
        pollfd readable{xcb_get_file_descriptor(connection.raw()), POLLIN, 0};
        poll(&readable, 1, kUntilNextLook);
    }
}

void X11ClipboardManager::keep(X11Clipboard& clipboard)
{
    const QByteArray hint("x-kde-passwordManagerHint");
    if (clipboard.formats().contains(hint) && clipboard.read(hint) == "secret") {
        ++m_secrets;
        return;
    }
    const auto png = clipboard.read("image/png");
    const std::lock_guard lock(m_mutex);
    if (png && (m_kept.isEmpty() || m_kept.back() != *png))
        m_kept.push_back(*png);
}

void X11ClipboardManager::answer(const Connection& connection, xcb_window_t window,
                                 X11Clipboard& clipboard,
                                 const xcb_selection_request_event_t& request)
{
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    const bool asksToKeep = request.target == connection.atom("SAVE_TARGETS");
    if (asksToKeep) {
        keep(clipboard);
        own(connection, window, "CLIPBOARD");
        notice.property = request.property;
    }
    xcb_send_event(connection.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notice));
    connection.sync();
    if (asksToKeep)
        m_handed = true;
}

} // namespace brindlecam::desktop
