#include "x11/SelectionReader.h"

#include "platform/x11/connection/X11.h"

#include <poll.h>

#include <cstring>
#include <utility>
#include <vector>

namespace brindlecam::test {

SelectionReader::SelectionReader()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    m_window = xcb_generate_id(m_connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window,
                      xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root, 0, 0, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    m_property = atom("PASTED");
    m_incr = atom("INCR");
}

SelectionReader::~SelectionReader()
{
    die();
}

void SelectionReader::die()
{
    if (m_connection)
        xcb_disconnect(std::exchange(m_connection, nullptr));
}

void SelectionReader::ask(const char* target, xcb_timestamp_t time)
{
    m_asked = atom(target);
    xcb_delete_property(m_connection, m_window, m_property);
    xcb_convert_selection(m_connection, m_window, atom("CLIPBOARD"), m_asked, m_property, time);
    xcb_flush(m_connection);
}

std::optional<QByteArray> SelectionReader::answer()
{
    if (!waitForNotify(m_asked))
        return std::nullopt;
    return takeWhole(m_property);
}

std::optional<QByteArray> SelectionReader::takeWhole(xcb_atom_t property)
{
    xcb_atom_t type = XCB_ATOM_NONE;
    QByteArray bytes = take(property, &type);
    if (type != m_incr)
        return bytes;
    m_chunks.clear();
    return finishChunks();
}

bool SelectionReader::beginChunks()
{
    if (!waitForNotify(m_asked))
        return false;
    xcb_atom_t type = XCB_ATOM_NONE;
    (void)take(m_property, &type);
    if (type != m_incr || !waitForProperty(m_property))
        return false;
    m_chunks = take(m_property, &type);
    return !m_chunks.isEmpty();
}

std::optional<QByteArray> SelectionReader::finishChunks()
{
    while (waitForProperty(m_property)) {
        xcb_atom_t type = XCB_ATOM_NONE;
        const QByteArray chunk = take(m_property, &type);
        if (chunk.isEmpty())
            return std::exchange(m_chunks, {});
        m_chunks += chunk;
    }
    return std::nullopt;
}

std::optional<QByteArray> SelectionReader::read(const char* target)
{
    ask(target);
    return answer();
}

QList<QByteArray> SelectionReader::targets()
{
    const auto bytes = read("TARGETS");
    QList<QByteArray> names;
    if (!bytes)
        return names;
    for (qsizetype i = 0; i + 4 <= bytes->size(); i += 4) {
        xcb_atom_t one = XCB_ATOM_NONE;
        std::memcpy(&one, bytes->constData() + i, 4);
        names.push_back(nameOf(one));
    }
    return names;
}

QList<std::optional<QByteArray>> SelectionReader::readMultiple(const QList<QByteArray>& targets)
{
    std::vector<xcb_atom_t> pairs;
    for (const QByteArray& target : targets) {
        pairs.push_back(atom(target.constData()));
        pairs.push_back(atom(("PASTED_" + target).constData()));
    }
    m_asked = atom("MULTIPLE");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, m_property,
                        atom("ATOM_PAIR"), 32, static_cast<std::uint32_t>(pairs.size()),
                        pairs.data());
    xcb_convert_selection(m_connection, m_window, atom("CLIPBOARD"), m_asked, m_property,
                          XCB_CURRENT_TIME);
    QList<std::optional<QByteArray>> contents;
    if (!waitForNotify(m_asked))
        return contents;
    const auto answered = atomsOf(m_window, m_property);
    for (qsizetype i = 1; i < answered.size(); i += 2) {
        xcb_atom_t type = XCB_ATOM_NONE;
        contents.push_back(answered[i] == XCB_ATOM_NONE ? std::nullopt
                                                        : std::optional(take(answered[i], &type)));
    }
    return contents;
}

bool SelectionReader::own(const char* selection)
{
    xcb_set_selection_owner(m_connection, m_window, atom(selection), XCB_CURRENT_TIME);
    return ownerOf(selection) == m_window;
}

xcb_window_t SelectionReader::ownerOf(const char* selection)
{
    const x11::Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, atom(selection)), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_generic_event_t* SelectionReader::waitFor(int kind,
                                              const std::function<bool(xcb_generic_event_t*)>& is,
                                              std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    xcb_flush(m_connection);
    while (std::chrono::steady_clock::now() < end) {
        x11::Owned<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
        if (!event) {
            pollfd ready{xcb_get_file_descriptor(m_connection), POLLIN, 0};
            ::poll(&ready, 1, 50);
            continue;
        }
        if ((event->response_type & 0x7f) == kind && is(event.get()))
            return event.release();
    }
    return nullptr;
}

bool SelectionReader::waitForNotify(xcb_atom_t target)
{
    const x11::Owned<xcb_generic_event_t> event(
        waitFor(XCB_SELECTION_NOTIFY, [target](xcb_generic_event_t* one) {
            return reinterpret_cast<xcb_selection_notify_event_t*>(one)->target == target;
        }));
    return event &&
           reinterpret_cast<xcb_selection_notify_event_t*>(event.get())->property != XCB_ATOM_NONE;
}

bool SelectionReader::waitForProperty(xcb_atom_t property)
{
    const x11::Owned<xcb_generic_event_t> event(
        waitFor(XCB_PROPERTY_NOTIFY, [property](xcb_generic_event_t* one) {
            const auto* notify = reinterpret_cast<xcb_property_notify_event_t*>(one);
            return notify->atom == property && notify->state == XCB_PROPERTY_NEW_VALUE;
        }));
    return event != nullptr;
}

QByteArray SelectionReader::take(xcb_atom_t property, xcb_atom_t* type)
{
    const x11::Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection,
                               xcb_get_property(m_connection, 1, m_window, property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, 0x1fffffff),
                               nullptr));
    if (!reply)
        return {};
    *type = reply->type;
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

xcb_atom_t SelectionReader::atom(const char* name)
{
    const x11::Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

QByteArray SelectionReader::nameOf(xcb_atom_t atom)
{
    const x11::Owned<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    if (!reply)
        return {};
    return {xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get())};
}

QList<xcb_atom_t> SelectionReader::atomsOf(xcb_window_t window, xcb_atom_t property)
{
    const x11::Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
        nullptr));
    QList<xcb_atom_t> atoms;
    if (!reply || reply->format != 32)
        return atoms;
    const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    for (int i = 0; i < xcb_get_property_value_length(reply.get()) / 4; ++i)
        atoms.push_back(first[i]);
    return atoms;
}

} // namespace brindlecam::test
