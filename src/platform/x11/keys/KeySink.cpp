#include "platform/x11/keys/KeySink.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <array>
#include <chrono>
#include <utility>

namespace brindlecam {

namespace {

constexpr std::chrono::seconds kSafetyInterval{1};
constexpr int kMostSeconds = 3;

xcb_window_t makeWindow()
{
    constexpr int kOutside = -10;
    const xcb_window_t window = xcb_generate_id(x11::connection());
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS |
                                                     XCB_EVENT_MASK_KEY_RELEASE};
    xcb_create_window(x11::connection(), XCB_COPY_FROM_PARENT, window, x11::root(), kOutside,
                      kOutside, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(x11::connection(), window);
    return window;
}

} // namespace

KeySink::KeySink(std::shared_ptr<X11Events> events, const x11::KeySet& keys,
                 std::function<void()> keysUp)
    : m_events(std::move(events))
    , m_keys(keys)
    , m_keysUp(std::move(keysUp))
    , m_window(makeWindow())
    , m_secondsLeft(kMostSeconds)
{
    QObject::connect(&m_safety, &QTimer::timeout, &m_safety, [this] { lookAfterALongTime(); });
    m_safety.start(kSafetyInterval);
    m_subscription = m_events->listen([this](const auto& event) { return handle(event); });
    take();
    // A key may have come up before the keyboard was ours.
    QTimer::singleShot(0, &m_safety, [this] { look(); });
}

KeySink::~KeySink()
{
    xcb_ungrab_keyboard(x11::connection(), XCB_CURRENT_TIME);
    xcb_destroy_window(x11::connection(), m_window);
    xcb_flush(x11::connection());
}

void KeySink::take()
{
    x11::setFocus(m_window);
    // The focus alone is not enough: the window manager hands it on when the session's windows go.
    // Refused while another program has the keyboard; then the keys don't reach the window below
    // either.
    const auto cookie = xcb_grab_keyboard(x11::connection(), 0, m_window, XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const x11::Owned<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(x11::connection(), cookie, nullptr));
}

X11Events::Verdict KeySink::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) != XCB_KEY_PRESS && kindOf(event) != XCB_KEY_RELEASE)
        return X11Events::Verdict::pass;
    if (reinterpret_cast<const xcb_key_press_event_t&>(event).event != m_window)
        return X11Events::Verdict::pass;
    if (kindOf(event) == XCB_KEY_RELEASE)
        look();
    return X11Events::Verdict::swallow;
}

void KeySink::look()
{
    // A repeat's release leaves the key down.
    if ((x11::keysDown() & m_keys).none())
        finish();
}

void KeySink::lookAfterALongTime()
{
    --m_secondsLeft;
    if (m_secondsLeft <= 0)
        finish();
    else
        look();
}

void KeySink::finish()
{
    // The call may destroy this object, and with it the function.
    if (const auto keysUp = std::exchange(m_keysUp, nullptr))
        keysUp();
}

} // namespace brindlecam
