#pragma once

#include "platform/x11/keys/GrabPatience.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace brindlecam::x11 {

/// Other clients' active grabs of pointer and keyboard, and the menus that hold them. Grabs of our
/// own, such as that of a hot key while it is down, are none. Main thread.
class ForeignGrabs final {
public:
    ForeignGrabs();
    ~ForeignGrabs();
    ForeignGrabs(const ForeignGrabs&) = delete;
    ForeignGrabs& operator=(const ForeignGrabs&) = delete;

    /// Whether there is any now. One round trip; nobody notices.
    [[nodiscard]] bool any() const;
    /// All there is to know. Menus are named only where Escape can be pressed and would reach them.
    [[nodiscard]] GrabPatience::Seen look() const;
    /// Presses Escape and lets it go, for an open menu; nothing when that has closed meanwhile.
    void pressEscape() const;

private:
    struct Grabs {
        bool pointer = false;
        bool keyboard = false;
    };
    [[nodiscard]] Grabs grabs() const;
    [[nodiscard]] std::vector<std::uint32_t> openMenus(Grabs grabs) const;
    [[nodiscard]] bool canPress() const;

    xcb_window_t m_window = XCB_WINDOW_NONE; ///< never mapped
};

} // namespace brindlecam::x11
