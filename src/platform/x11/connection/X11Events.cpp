#include "platform/x11/connection/X11Events.h"

#include "platform/x11/connection/X11.h"

#include <QCoreApplication>

#include <cstring>
#include <utility>

namespace brindlecam {

namespace {

// Of the input extension: its events all look alike at the start, with their time in the fourth
// word and, where there is one, the button in the fifth.
constexpr int kTimeOffset = 12;
constexpr int kDetailOffset = 16;
constexpr std::uint16_t kInputPress = 4;

std::uint32_t wordAt(const xcb_generic_event_t& event, int offset)
{
    std::uint32_t word = 0;
    std::memcpy(&word, reinterpret_cast<const char*>(&event) + offset, sizeof(word));
    return word;
}

/// Major opcode of the input extension, 0 when the server lacks it.
std::uint8_t inputExtension()
{
    constexpr char kName[] = "XInputExtension";
    const auto cookie = xcb_query_extension(x11::connection(), sizeof(kName) - 1, kName);
    const x11::Owned<xcb_query_extension_reply_t> reply(
        xcb_query_extension_reply(x11::connection(), cookie, nullptr));
    return reply && reply->present ? reply->major_opcode : std::uint8_t{0};
}

bool comesFromGrab(const xcb_generic_event_t& event)
{
    if (kindOf(event) != XCB_FOCUS_IN && kindOf(event) != XCB_FOCUS_OUT)
        return false;
    const auto mode = reinterpret_cast<const xcb_focus_in_event_t&>(event).mode;
    return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
}

} // namespace

X11Events::X11Events()
    : m_inputExtension(inputExtension())
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11Events::~X11Events()
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

X11Events::Subscription X11Events::listen(Listener listener)
{
    std::erase_if(m_listeners, [](const auto& known) { return known.expired(); });
    auto subscription = std::make_shared<const Listener>(std::move(listener));
    m_listeners.push_back(subscription);
    return subscription;
}

bool X11Events::nativeEventFilter(const QByteArray& kind, void* message, qintptr* result)
{
    Q_UNUSED(result);
    if (kind != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    noteTime(event);
    notePress(event);
    noteClick(event);
    if (comesFromGrab(event))
        return true;
    // By index and with a share of the listener: listeners come and go during a call.
    for (std::size_t i = 0; i < m_listeners.size(); ++i) {
        const Subscription listener = m_listeners[i].lock();
        if (listener && (*listener)(event) == Verdict::swallow)
            return true;
    }
    return false;
}

void X11Events::notePress(const xcb_generic_event_t& event)
{
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    if (kindOf(event) == XCB_KEY_PRESS && m_pressFilter.pressed(key.detail, key.time))
        m_presses.set(key.detail);
    else if (kindOf(event) == XCB_KEY_RELEASE)
        m_pressFilter.released(key.detail, key.time);
}

void X11Events::noteTime(const xcb_generic_event_t& event)
{
    switch (kindOf(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_MOTION_NOTIFY:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        m_lastTime = reinterpret_cast<const xcb_key_press_event_t&>(event).time;
        break;
    case XCB_PROPERTY_NOTIFY:
        m_lastTime = reinterpret_cast<const xcb_property_notify_event_t&>(event).time;
        break;
    case XCB_GE_GENERIC:
        if (isOfInputExtension(event))
            m_lastTime = wordAt(event, kTimeOffset);
        break;
    }
}

void X11Events::noteClick(const xcb_generic_event_t& event)
{
    constexpr std::uint32_t kFirstOfWheel = 4;
    const bool press = kindOf(event) == XCB_BUTTON_PRESS;
    const bool inputPress =
        isOfInputExtension(event) &&
        reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type == kInputPress;
    if (!press && !inputPress)
        return;
    const std::uint32_t button =
        press ? reinterpret_cast<const xcb_button_press_event_t&>(event).detail
              : wordAt(event, kDetailOffset);
    if (button < kFirstOfWheel)
        m_lastClick.start();
}

bool X11Events::isOfInputExtension(const xcb_generic_event_t& event) const
{
    return kindOf(event) == XCB_GE_GENERIC && m_inputExtension != 0 &&
           reinterpret_cast<const xcb_ge_generic_event_t&>(event).extension == m_inputExtension;
}

std::optional<std::chrono::milliseconds> X11Events::sinceClick() const
{
    if (!m_lastClick.isValid())
        return std::nullopt;
    return std::chrono::milliseconds(m_lastClick.elapsed());
}

} // namespace brindlecam
