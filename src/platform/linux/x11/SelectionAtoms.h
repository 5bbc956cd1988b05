#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

namespace brindlecam::x11 {

/// An atom on any connection; a round trip each time.
[[nodiscard]] xcb_atom_t internAtom(xcb_connection_t* connection, const QByteArray& name);

/// The atoms that the selection protocol is made of, looked up together.
struct SelectionAtoms {
    explicit SelectionAtoms(xcb_connection_t* connection);

    xcb_atom_t clipboard;
    xcb_atom_t clipboardManager;
    xcb_atom_t saveTargets;
    xcb_atom_t targets;
    xcb_atom_t timestamp;
    xcb_atom_t multiple;
    xcb_atom_t atomPair;
    xcb_atom_t incr;
    xcb_atom_t null;
};

} // namespace brindlecam::x11
