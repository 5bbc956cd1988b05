#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <vector>

namespace brindlecam::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// Owns a reply, error or event that xcb allocated.
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

/// Every bit of a pixel, for requests that read pictures.
inline constexpr std::uint32_t kAllPlanes = ~0U;

struct ConnectionDeleter {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// Owns a connection beside Qt's.
using OwnConnection = std::unique_ptr<xcb_connection_t, ConnectionDeleter>;

/// Qt's own connection to the X server, alive as long as the application object. Main thread.
[[nodiscard]] xcb_connection_t* connection();
/// The screen of that connection; its root window is the desktop.
[[nodiscard]] const xcb_screen_t& screen();
[[nodiscard]] xcb_window_t root();

/// An atom by name, looked up once per name.
[[nodiscard]] xcb_atom_t atom(const char* name);

/// Looks several atoms up in one round trip, so that the first atom() of each costs none.
void internAtoms(std::initializer_list<const char*> names);

/// A whole property of 32-bit items (windows, atoms, numbers), empty when absent or of another
/// type. `type` may be XCB_ATOM_ANY.
[[nodiscard]] std::vector<std::uint32_t> property32(xcb_window_t window, xcb_atom_t property,
                                                    xcb_atom_t type);

/// The two halves of property32, so that many requests share one round trip: every cookie that was
/// asked for must be received once.
[[nodiscard]] xcb_get_property_cookie_t requestProperty32(xcb_window_t window, xcb_atom_t property,
                                                          xcb_atom_t type);
[[nodiscard]] std::vector<std::uint32_t> receiveProperty32(xcb_get_property_cookie_t cookie);

/// Whether a window manager that follows the EWMH runs now.
[[nodiscard]] bool hasWindowManager();

} // namespace brindlecam::x11
