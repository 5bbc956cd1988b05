#include "platform/linux/x11/SelectionAtoms.h"

#include "platform/linux/x11/X11.h"

namespace brindlecam::x11 {

xcb_atom_t internAtom(xcb_connection_t* connection, const QByteArray& name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
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
