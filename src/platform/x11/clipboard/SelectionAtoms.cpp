#include "platform/x11/clipboard/SelectionAtoms.h"

#include "platform/x11/connection/X11.h"

namespace brindlecam::x11 {

xcb_atom_t internAtom(xcb_connection_t* connection, const QByteArray& name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<xcb_atom_t> atomsIn(xcb_connection_t* connection, xcb_window_t window,
                                xcb_atom_t property)
{
    constexpr std::uint32_t kMostWords = 4096; // more targets nobody asks for at once
    const auto cookie =
        xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    return {atoms, atoms + xcb_get_property_value_length(reply.get()) / sizeof(xcb_atom_t)};
}

void writeWords(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                xcb_atom_t type, const std::vector<std::uint32_t>& words)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(words.size()), words.data());
}

xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection)
{
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

SelectionAtoms::SelectionAtoms(xcb_connection_t* connection)
    : clipboard(internAtom(connection, "CLIPBOARD"))
    , clipboardManager(internAtom(connection, "CLIPBOARD_MANAGER"))
    , saveTargets(internAtom(connection, "SAVE_TARGETS"))
    , targets(internAtom(connection, "TARGETS"))
    , timestamp(internAtom(connection, "TIMESTAMP"))
    , multiple(internAtom(connection, "MULTIPLE"))
    , atomPair(internAtom(connection, "ATOM_PAIR"))
    , incr(internAtom(connection, "INCR"))
    , null(internAtom(connection, "NULL"))
{
}

} // namespace brindlecam::x11
