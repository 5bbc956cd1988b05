#include "platform/linux/x11/KeyGrab.h"

#include "platform/linux/x11/X11.h"

#include <utility>

namespace brindlecam::x11 {

KeyGrab::KeyGrab(Keys keys)
    : m_keys(std::move(keys))
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
    bool refused = asked.empty();
    for (const xcb_void_cookie_t cookie : asked) {
        const Owned<xcb_generic_error_t> error(xcb_request_check(connection(), cookie));
        refused = refused || error;
    }
    // Ungrabbing what was refused is harmless: it concerns our own grabs only.
    std::unique_ptr<KeyGrab> grab(new KeyGrab(std::move(keys)));
    if (refused)
        grab.reset();
    return grab;
}

KeyGrab::~KeyGrab()
{
    for (const std::uint8_t code : m_keys.codes) {
        for (const std::uint16_t state : m_keys.states)
            xcb_ungrab_key(connection(), code, root(), state);
    }
    xcb_flush(connection());
}

} // namespace brindlecam::x11
