#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace brindlecam::x11 {

/// Some keys, with exact modifiers, that the server gives to us whichever window has the focus.
/// Given back when destroyed. Main thread.
class KeyGrab final {
public:
    struct Keys {
        std::vector<std::uint8_t> codes;   ///< X key codes
        std::vector<std::uint16_t> states; ///< modifier states, every lock combination included

        bool operator==(const Keys&) const = default;
    };

    /// Grabs each key in every state, or not at all where one of its states is refused; null when
    /// no key is left.
    [[nodiscard]] static std::unique_ptr<KeyGrab> take(Keys keys);

    ~KeyGrab();
    KeyGrab(const KeyGrab&) = delete;
    KeyGrab& operator=(const KeyGrab&) = delete;

    /// What was asked for.
    [[nodiscard]] const Keys& keys() const { return m_keys; }
    /// Whether this key (X key code) was given to us.
    [[nodiscard]] bool holds(std::uint8_t code) const;

private:
    KeyGrab(Keys keys, std::vector<std::uint8_t> held);

    Keys m_keys;
    std::vector<std::uint8_t> m_held; ///< those of the codes that nobody else has
};

} // namespace brindlecam::x11
