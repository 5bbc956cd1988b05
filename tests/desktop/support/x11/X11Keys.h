#pragma once

#include <Qt>

#include <xcb/xcb.h>

#include <cstdint>

namespace brindlecam::desktop {

/// Keys by what they type without modifiers, as Qt and as X name them.
[[nodiscard]] xcb_keysym_t keysymOf(Qt::Key key);
[[nodiscard]] Qt::Key keyOf(xcb_keysym_t keysym);
/// XCB_MOD_MASK_… bits of a usual keyboard.
[[nodiscard]] std::uint16_t maskOf(Qt::KeyboardModifiers modifiers);
[[nodiscard]] Qt::KeyboardModifiers modifiersOf(std::uint16_t mask);

} // namespace brindlecam::desktop
