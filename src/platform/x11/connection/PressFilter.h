#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <optional>

namespace brindlecam::x11 {

/// Tells a key's physical presses from its repeats while it is held: the server sends each repeat
/// as a release and a press of the same time, unless a client asks for repeats without releases
/// (XKB's detectable auto-repeat), which would change what Qt gets on its connection.
class PressFilter final {
public:
    /// A press arrived; true when a finger made it.
    [[nodiscard]] bool pressed(std::uint8_t code, xcb_timestamp_t time) const;
    /// A release arrived, of a finger or of a repeat.
    void released(std::uint8_t code, xcb_timestamp_t time);

private:
    std::array<std::optional<xcb_timestamp_t>, 256> m_released{};
};

} // namespace brindlecam::x11
