#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace brindlecam::x11 {

/// An atom on any connection; a round trip each time.
[[nodiscard]] xcb_atom_t internAtom(xcb_connection_t* connection, const QByteArray& name);

/// What a property of format 32 holds; empty when there is none. A round trip.
[[nodiscard]] std::vector<xcb_atom_t> atomsIn(xcb_connection_t* connection, xcb_window_t window,
                                              xcb_atom_t property);
/// Replaces a property by one of format 32.
void writeWords(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                xcb_atom_t type, const std::vector<std::uint32_t>& words);
/// Who owns a selection; XCB_WINDOW_NONE when nobody does. A round trip.
[[nodiscard]] xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection);

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
