#include "desktop/support/x11/SelectionReader.h"

#include <cstring>
#include <utility>

#include <poll.h>

namespace brindlecam::desktop {

SelectionReader::SelectionReader(const QString& display)
    : m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
    , m_property(m_connection.atom("PASTED"))
{
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.raw(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    m_connection.sync();
}

void SelectionReader::ask(const QByteArray& target, xcb_timestamp_t time)
{
    m_asked = m_connection.atom(target);
    xcb_delete_property(m_connection.raw(), m_window, m_property);
    xcb_convert_selection(m_connection.raw(), m_window, m_connection.atom("CLIPBOARD"), m_asked,
                          m_property, time);
    xcb_flush(m_connection.raw());
}

std::optional<QByteArray> SelectionReader::answer()
{
    m_inPieces = false;
    if (!isAnswered())
        return std::nullopt;
    auto bytes = take(m_property);
    if (!bytes || m_type != m_connection.atom("INCR"))
        return bytes;
    m_inPieces = true;
    m_pieces.clear();
    return finishPieces();
}

bool SelectionReader::beginPieces()
{
    if (!isAnswered() || !take(m_property) || m_type != m_connection.atom("INCR"))
        return false;
    m_pieces = nextPiece().value_or(QByteArray());
    return !m_pieces.isEmpty();
}

std::optional<QByteArray> SelectionReader::finishPieces()
{
    while (const auto piece = nextPiece()) {
        if (piece->isEmpty())
            return std::exchange(m_pieces, {});
        m_pieces += *piece;
    }
    return std::nullopt;
}

std::optional<QByteArray> SelectionReader::read(const QByteArray& target)
{
    ask(target);
    return answer();
}

QByteArrayList SelectionReader::targets()
{
    const QByteArray bytes = read("TARGETS").value_or(QByteArray());
    QByteArrayList names;
    for (qsizetype at = 0; at + 4 <= bytes.size(); at += 4) {
        xcb_atom_t target = XCB_ATOM_NONE;
        std::memcpy(&target, bytes.constData() + at, 4);
        names.push_back(m_connection.atomName(target));
    }
    return names;
}

QList<std::optional<QByteArray>> SelectionReader::readMultiple(const QByteArrayList& targets)
{
    std::vector<xcb_atom_t> pairs;
    for (const QByteArray& target : targets) {
        pairs.push_back(m_connection.atom(target));
        pairs.push_back(m_connection.atom("PASTED_" + target));
    }
    m_asked = m_connection.atom("MULTIPLE");
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window, m_property,
                        m_connection.atom("ATOM_PAIR"), 32,
                        static_cast<std::uint32_t>(pairs.size()), pairs.data());
    xcb_convert_selection(m_connection.raw(), m_window, m_connection.atom("CLIPBOARD"), m_asked,
                          m_property, XCB_CURRENT_TIME);
    xcb_flush(m_connection.raw());
    QList<std::optional<QByteArray>> contents;
    if (!isAnswered())
        return contents;
    const auto answered = m_connection.property32(m_window, m_connection.atomName(m_property));
    for (std::size_t i = 1; i < answered.size(); i += 2)
        contents.push_back(answered[i] == XCB_ATOM_NONE ? std::nullopt : take(answered[i]));
    return contents;
}

bool SelectionReader::own(const QByteArray& selection)
{
    xcb_set_selection_owner(m_connection.raw(), m_window, m_connection.atom(selection),
                            XCB_CURRENT_TIME);
    return m_connection.selectionOwner(selection) == m_window;
}

Owned<xcb_generic_event_t> SelectionReader::await(int kind, std::chrono::milliseconds patience)
{
    return awaitThat(
        kind, [](const xcb_generic_event_t&) { return true; }, patience);
}

template <typename Accept>
Owned<xcb_generic_event_t> SelectionReader::awaitThat(int kind, Accept accept,
                                                      std::chrono::milliseconds patience) const
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + patience;
    xcb_flush(m_connection.raw());
    while (true) {
        while (Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
            if ((event->response_type & 0x7f) == kind && accept(*event))
                return event;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            return nullptr;
        pollfd readable{xcb_get_file_descriptor(m_connection.raw()), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(left.count()));
    }
}

bool SelectionReader::isAnswered() const
{
    const auto answersUs = [this](const xcb_generic_event_t& event) {
        return reinterpret_cast<const xcb_selection_notify_event_t&>(event).target == m_asked;
    };
    const auto event = awaitThat(XCB_SELECTION_NOTIFY, answersUs);
    return event &&
           reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != XCB_ATOM_NONE;
}

std::optional<QByteArray> SelectionReader::nextPiece()
{
    const auto isWritten = [this](const xcb_generic_event_t& event) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return notify.atom == m_property && notify.state == XCB_PROPERTY_NEW_VALUE;
    };
    // The announcement of the pieces is itself a property and its event may still be queued: an
    // event without a property behind it is none of ours.
    while (awaitThat(XCB_PROPERTY_NOTIFY, isWritten)) {
        if (auto piece = take(m_property))
            return piece;
    }
    return std::nullopt;
}

std::optional<QByteArray> SelectionReader::take(xcb_atom_t property)
{
    constexpr std::uint32_t kEverything = 0x1fffffff;
    const auto cookie =
        xcb_get_property(m_connection.raw(), 1, m_window, property, XCB_ATOM_ANY, 0, kEverything);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.raw(), cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    m_type = reply->type;
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

} // namespace brindlecam::desktop
