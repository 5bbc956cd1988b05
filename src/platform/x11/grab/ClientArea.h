#pragma once

#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/grab/WindowStack.h"

#include <QRegion>

namespace brindlecam {

/// What a program itself paints of a window on the root, without what a window manager has put
/// around it. On its connection's thread; native pixels of the global desktop.
class ClientArea final {
public:
    /// Round trips.
    explicit ClientArea(const x11::RootAccess& access);

    /// The part of that which hides all beneath. From then on the server tells of changes.
    /// `blends`: the window has an alpha channel; then it is what the program says about it.
    [[nodiscard]] QRegion opaque(const StackedWindow& window, bool blends) const;

    /// Whether this tells of another opaque part.
    [[nodiscard]] bool isChange(const xcb_generic_event_t& event) const;

private:
    /// The window itself where nothing says that another one is a program's.
    [[nodiscard]] xcb_window_t clientIn(xcb_window_t window) const;
    [[nodiscard]] QRegion toldOpaque(xcb_window_t client) const;

    const x11::RootAccess& m_access;
    xcb_atom_t m_state = XCB_ATOM_NONE;
    xcb_atom_t m_opaque = XCB_ATOM_NONE;
};

} // namespace brindlecam
