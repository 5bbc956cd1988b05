#pragma once

#include <QString>

#include <bitset>
#include <cstdint>
#include <vector>

namespace brindlecam::x11 {

/// X key codes (evdev code + 8), one bit each.
using KeySet = std::bitset<256>;

/// Every key that is physically down now, modifiers included. One round trip. Main thread.
[[nodiscard]] KeySet keysDown();

/// Keys that act as modifiers: Shift, Control, locks … Main thread.
[[nodiscard]] KeySet modifierKeys();

/// The key that types Escape under the present keyboard map, wherever it is; 0 for none. Main
/// thread.
[[nodiscard]] std::uint8_t escapeKey();

/// What a key (X key code) types without modifiers in the layout that an event's state names. Empty
/// for keys that type nothing, and for those whose symbol says no character by itself. Main thread.
[[nodiscard]] QString plainCharacters(std::uint8_t code, std::uint16_t state);

/// Which bit of an event's state stands for which modifier under the present keyboard mapping.
struct ModifierBits {
    std::uint16_t alt = 0;
    std::uint16_t super = 0;
    std::uint16_t locks = 0; ///< Caps Lock, Num Lock and Scroll Lock together

    /// Asks the server. Main thread.
    [[nodiscard]] static ModifierBits read();

    /// State bits of a combination of KeyModifier bits.
    [[nodiscard]] std::uint16_t stateOf(int modifiers) const;
    /// The other way round; other bits mean nothing.
    [[nodiscard]] int modifiersOf(std::uint16_t state) const;
    /// Those bits of a key event's state that tell one combination from another.
    [[nodiscard]] std::uint16_t relevant(std::uint16_t state) const;
    /// Every way the locks can be on and off, none of them first.
    [[nodiscard]] std::vector<std::uint16_t> lockStates() const;

    bool operator==(const ModifierBits&) const = default;
};

} // namespace brindlecam::x11
