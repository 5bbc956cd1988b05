#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace brindlecam::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// Owns a reply, error or event that xcb allocated.
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

/// Qt's own connection to the X server, alive as long as the application object. Main thread.
[[nodiscard]] xcb_connection_t* connection();
/// The screen of that connection; its root window is the desktop.
[[nodiscard]] const xcb_screen_t& screen();
[[nodiscard]] xcb_window_t root();

/// An atom by name, looked up once per name.
[[nodiscard]] xcb_atom_t atom(const char* name);

/// A whole property of 32-bit items (windows, atoms, numbers), empty when absent or of another
/// type. `type` may be XCB_ATOM_ANY.
[[nodiscard]] std::vector<std::uint32_t> property32(xcb_window_t window, xcb_atom_t property,
                                                    xcb_atom_t type);

/// Whether a window manager that follows the EWMH runs now.
[[nodiscard]] bool hasWindowManager();
/// Whether a compositing manager runs now.
[[nodiscard]] bool hasCompositor();

} // namespace brindlecam::x11
