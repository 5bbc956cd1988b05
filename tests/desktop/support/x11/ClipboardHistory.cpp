#include "desktop/support/x11/ClipboardHistory.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/ClipboardReader.h"

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
    connection.sync();
    return xcb_get_extension_data(connection.raw(), &xcb_xfixes_id)->first_event +
           XCB_XFIXES_SELECTION_NOTIFY;
}

} // namespace

ClipboardHistory::ClipboardHistory(const QString& display)
    : m_thread([this, display] { lookOn(display); })
{
    if (!waitUntil([this] { return m_looksOn.load(); }))
        qFatal("nobody looks at the clipboard");
}

ClipboardHistory::~ClipboardHistory()
{
    m_ends = true;
    m_thread.join();
}

QByteArrayList ClipboardHistory::kept() const
{
    const std::lock_guard lock(m_mutex);
    return m_kept;
}

void ClipboardHistory::lookOn(const QString& display)
{
    const Connection connection(display);
    ClipboardReader reader(display);
    const int newOwner = askForNewOwners(connection);
    m_looksOn = true;
    while (!m_ends && xcb_connection_has_error(connection.raw()) == 0) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection.raw())}) {
            if ((event->response_type & 0x7f) == newOwner)
                keep(reader);
        }
        pollfd readable{xcb_get_file_descriptor(connection.raw()), POLLIN, 0};
        poll(&readable, 1, kUntilNextLook);
    }
}

void ClipboardHistory::keep(ClipboardReader& reader)
{
    const QByteArray hint("x-kde-passwordManagerHint");
    if (reader.targets().contains(hint) && reader.read(hint) == "secret") {
        ++m_secrets;
        return;
    }
    const auto png = reader.read("image/png");
    const std::lock_guard lock(m_mutex);
    if (png && (m_kept.isEmpty() || m_kept.back() != *png))
        m_kept.push_back(*png);
}

} // namespace brindlecam::desktop
