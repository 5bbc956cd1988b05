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

    /// Grabs every key in every state; null, with nothing left grabbed, when one is refused.
    [[nodiscard]] static std::unique_ptr<KeyGrab> take(Keys keys);

    ~KeyGrab();
    KeyGrab(const KeyGrab&) = delete;
    KeyGrab& operator=(const KeyGrab&) = delete;

    [[nodiscard]] const Keys& keys() const { return m_keys; }

private:
    explicit KeyGrab(Keys keys);

    Keys m_keys;
};

} // namespace brindlecam::x11
