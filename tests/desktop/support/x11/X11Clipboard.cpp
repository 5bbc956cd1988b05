#include "desktop/support/x11/X11Clipboard.h"

#include "desktop/support/Patience.h"

#include <QDeadlineTimer>

#include <cstring>
#include <utility>

#include <poll.h>

namespace brindlecam::desktop {

X11Clipboard::X11Clipboard(const QString& display, QByteArray selection)
    : m_connection(display)
    , m_selection(std::move(selection))
    , m_window(xcb_generate_id(m_connection.raw()))
    , m_property(m_connection.atom("PASTED"))
{
    const std::uint32_t events[] = {XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(m_connection.raw(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      events);
    m_connection.sync();
}

QByteArrayList X11Clipboard::formats()
{
    const auto bytes = read("TARGETS");
    QByteArrayList names;
    if (!bytes)
        return names;
    for (qsizetype at = 0; at + 4 <= bytes->size(); at += 4) {
        xcb_atom_t atom = 0;
        std::memcpy(&atom, bytes->constData() + at, 4);
        names.append(m_connection.atomName(atom));
    }
    return names;
}

std::optional<QByteArray> X11Clipboard::read(const QByteArray& format)
{
    m_pieces = false;
    if (!convert(format))
        return std::nullopt;
    auto bytes = takeProperty();
    if (m_type == m_connection.atom("INCR")) {
        m_pieces = true;
        return takePieces();
    }
    return bytes;
}

std::optional<QString> X11Clipboard::text()
{
    const auto bytes = read("UTF8_STRING");
    return bytes ? std::optional(QString::fromUtf8(*bytes)) : std::nullopt;
}

void X11Clipboard::cutOwnersConnection()
{
    xcb_kill_client(m_connection.raw(), m_connection.selectionOwner(m_selection));
    m_connection.sync();
}

bool X11Clipboard::convert(const QByteArray& format)
{
    xcb_delete_property(m_connection.raw(), m_window, m_property);
    xcb_convert_selection(m_connection.raw(), m_window, m_connection.atom(m_selection),
                          m_connection.atom(format), m_property, XCB_CURRENT_TIME);
    xcb_flush(m_connection.raw());
    bool delivered = false;
    const auto answered = [&delivered](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_SELECTION_NOTIFY)
            return false;
        delivered = reinterpret_cast<const xcb_selection_notify_event_t&>(event).property != 0;
        return true;
    };
    return awaitEvent(answered) && delivered;
}

std::optional<QByteArray> X11Clipboard::takeProperty()
{
    constexpr std::uint32_t kEverything = 0x1fffffff;
    const auto cookie =
        xcb_get_property(m_connection.raw(), 1, m_window, m_property, XCB_ATOM_ANY, 0, kEverything);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.raw(), cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    m_type = reply->type;
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

std::optional<QByteArray> X11Clipboard::takePieces()
{
    const auto written = [this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
            return false;
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return notify.atom == m_property && notify.state == XCB_PROPERTY_NEW_VALUE;
    };
    QByteArray whole;
    // The announcement of the pieces is itself a property and its event may still be queued: an
    // event without a property behind it is none of ours.
    while (awaitEvent(written)) {
        const auto piece = takeProperty();
        if (!piece)
            continue;
        if (piece->isEmpty())
            return whole;
        whole += *piece;
    }
    return std::nullopt;
}

template <typename Accept>
bool X11Clipboard::awaitEvent(Accept accept) const
{
    const QDeadlineTimer deadline(kPatience);
    while (!deadline.hasExpired()) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
            if (accept(*event))
                return true;
        }
        pollfd readable{xcb_get_file_descriptor(m_connection.raw()), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(deadline.remainingTime()));
    }
    return false;
}

} // namespace brindlecam::desktop
