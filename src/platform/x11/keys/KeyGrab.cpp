#include "platform/x11/keys/KeyGrab.h"

#include "platform/x11/connection/X11.h"

#include <algorithm>
#include <utility>

namespace brindlecam::x11 {

namespace {

void release(std::uint8_t code, const std::vector<std::uint16_t>& states)
{
    for (const std::uint16_t state : states)
        xcb_ungrab_key(connection(), code, root(), state);
}

} // namespace

KeyGrab::KeyGrab(Keys keys, std::vector<std::uint8_t> held)
    : m_keys(std::move(keys))
    , m_held(std::move(held))
{
}

std::unique_ptr<KeyGrab> KeyGrab::take(Keys keys)
{
    std::vector<xcb_void_cookie_t> asked;
    for (const std::uint8_t code : keys.codes) {
        for (const std::uint16_t state : keys.states) {
            asked.push_back(xcb_grab_key_checked(connection(), 0, root(), state, code,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    std::vector<std::uint8_t> held;
    auto cookie = asked.cbegin();
    for (const std::uint8_t code : keys.codes) {
        bool refused = keys.states.empty();
        for (std::size_t state = 0; state < keys.states.size(); ++state) {
            const Owned<xcb_generic_error_t> error(xcb_request_check(connection(), *cookie++));
            refused = refused || error;
        }
        // Ungrabbing what was refused is harmless: it concerns our own grabs only.
        if (refused)
            release(code, keys.states);
        else
            held.push_back(code);
    }
    if (held.empty()) {
        xcb_flush(connection());
        return nullptr;
    }
    return std::unique_ptr<KeyGrab>(new KeyGrab(std::move(keys), std::move(held)));
}

KeyGrab::~KeyGrab()
{
    for (const std::uint8_t code : m_held)
        release(code, m_keys.states);
    xcb_flush(connection());
}

bool KeyGrab::holds(std::uint8_t code) const
{
    return std::ranges::find(m_held, code) != m_held.end();
}

} // namespace brindlecam::x11
