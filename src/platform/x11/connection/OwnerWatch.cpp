#include "platform/x11/connection/OwnerWatch.h"

#include "platform/x11/connection/X11.h"

#include <QCoreApplication>

#include <xcb/xfixes.h>

#include <utility>

namespace brindlecam {

namespace {

constexpr int kSentByClient = 0x80; ///< flag in an event's type

/// Asks for events about the selection's owner; the code they arrive with, or a negative one.
int watchSelection(xcb_atom_t selection)
{
    auto* const connection = x11::connection();
    const auto* const extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return -1;
    const x11::Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 1, 0), nullptr));
    if (!version)
        return -1;
    xcb_xfixes_select_selection_input(connection, x11::root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
}

} // namespace

OwnerWatch::OwnerWatch(const char* selection, std::function<void()> changed)
    : m_selection(x11::atom(selection))
    , m_changed(std::move(changed))
    , m_ownerChangedEvent(watchSelection(m_selection))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
    const x11::Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        x11::connection(), xcb_get_selection_owner(x11::connection(), m_selection), nullptr));
    if (reply)
        m_owner = reply->owner;
}

OwnerWatch::~OwnerWatch() = default;

bool OwnerWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & ~kSentByClient) != m_ownerChangedEvent)
        return false;
    const auto* const change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
    if (change->selection == m_selection &&
        std::exchange(m_owner, change->owner) != change->owner && m_changed)
        m_changed();
    return false;
}

} // namespace brindlecam
