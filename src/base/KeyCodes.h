#pragma once

#include <optional>
#include <vector>

namespace brindlecam {

/// Virtual key codes (as shortcuts are stored) against evdev key codes, by physical position on an
/// ISO or ANSI keyboard. Print Screen, Scroll Lock and Pause arrive as F13, F14 and F15.
namespace KeyCodes {

inline constexpr int kReturn = 36;
inline constexpr int kEscape = 53;
inline constexpr int kKeypadEnter = 76;

/// Every evdev code (linux/input-event-codes.h) that arrives as this virtual key code: F13 is also
/// Print Screen. Empty for keys we do not know.
[[nodiscard]] std::vector<int> toEvdev(int virtualKeyCode);
/// Virtual key code of an evdev code; none for keys we do not know.
[[nodiscard]] std::optional<int> fromEvdev(int evdevCode);

} // namespace KeyCodes

} // namespace brindlecam
