#include "platform/x11/desktop/X11ForeignPresses.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <QObject>

#include <xcb/xinput.h>

#include <optional>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

constexpr std::uint32_t kLeftButton = 1;
constexpr std::uint32_t kRightButton = 3;

/// Raw events come to one's own grabs and to others' since this version.
constexpr std::uint16_t kMajor = 2;
constexpr std::uint16_t kMinor = 1;

/// The opcode of the extension; 0 where it is missing or too old.
std::uint8_t inputExtension()
{
    const auto* found = xcb_get_extension_data(x11::connection(), &xcb_input_id);
    if (!found || !found->present)
        return 0;
    // Qt may have asked before: then the server keeps to what it told then, or refuses this one.
    const x11::Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        x11::connection(), xcb_input_xi_query_version(x11::connection(), kMajor, kMinor), nullptr));
    if (version && (version->major_version < kMajor ||
                    (version->major_version == kMajor && version->minor_version < kMinor)))
        return 0;
    return found->major_opcode;
}

/// Asks for raw presses of every pointer, or for none. False when the server refuses.
bool select(bool presses)
{
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
             presses ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : 0U};
    const x11::Owned<xcb_generic_error_t> refused(xcb_request_check(
        x11::connection(),
        xcb_input_xi_select_events_checked(x11::connection(), x11::root(), 1, &wanted.head)));
    return !refused;
}

/// Whether the innermost window under the pointer, or one around it, is ours: a window of ours may
/// lie in a window manager's frame, or in a tray.
bool pointerIsOnOurs()
{
    xcb_window_t window = x11::root();
    while (window != XCB_WINDOW_NONE) {
        if (x11::isOurs(window))
            return true;
        const x11::Owned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
            x11::connection(), xcb_query_pointer(x11::connection(), window), nullptr));
        window = pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    return false;
}

} // namespace

/// Hears the presses for all who watch: the server tells a client or does not, whatever part of it
/// asks. A raw event does not tell where. If the pointer has left the place by the time it is
/// asked, a window of ours has got the press itself: as an event of the same time, which has
/// arrived with the pointer's answer at the latest.
class X11ForeignPresses::Ear final {
public:
    using Pressed = std::function<void()>;

    Ear(const std::shared_ptr<X11Events>& events, std::uint8_t extension)
        : m_extension(extension)
        , m_subscription(events->listen([this](const auto& event) { return handle(event); }))
    {
    }
    ~Ear() { (void)select(false); }
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    /// As long as the caller keeps it.
    void tell(const std::shared_ptr<const Pressed>& pressed)
    {
        std::erase_if(m_told, [](const auto& known) { return known.expired(); });
        m_told.push_back(pressed);
    }

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event)
    {
        if (kindOf(event) == XCB_BUTTON_PRESS)
            forgive(reinterpret_cast<const xcb_button_press_event_t&>(event).time);
        if (kindOf(event) != XCB_GE_GENERIC)
            return X11Events::Verdict::pass;
        const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
        if (raw.extension != m_extension)
            return X11Events::Verdict::pass;
        if (raw.event_type == XCB_INPUT_BUTTON_PRESS)
            forgive(raw.time); // they begin alike
        if (raw.event_type != XCB_INPUT_RAW_BUTTON_PRESS)
            return X11Events::Verdict::pass;
        if ((raw.detail == kLeftButton || raw.detail == kRightButton) && !pointerIsOnOurs()) {
            m_suspect = raw.time;
            QMetaObject::invokeMethod(
                &m_context, [this] { decide(); }, Qt::QueuedConnection);
        }
        return X11Events::Verdict::swallow; // Qt has not asked for it
    }

    void forgive(xcb_timestamp_t time)
    {
        if (m_suspect == time)
            m_suspect.reset();
    }

    // Whoever is told may end this, and others who would be.
    void decide()
    {
        if (!std::exchange(m_suspect, std::nullopt))
            return;
        const auto told = m_told;
        for (const auto& pressed : told) {
            if (const auto listening = pressed.lock())
                (*listening)();
        }
    }

    const std::uint8_t m_extension;
    std::vector<std::weak_ptr<const Pressed>> m_told;
    std::optional<xcb_timestamp_t> m_suspect; ///< a press that was not ours, as far as we know
    QObject m_context;
    X11Events::Subscription m_subscription;
};

class X11ForeignPresses::Watch final : public PressWatch {
public:
    Watch(std::shared_ptr<Ear> ear, std::function<void()> pressed)
        : m_ear(std::move(ear))
        , m_pressed(std::make_shared<const std::function<void()>>(std::move(pressed)))
    {
        m_ear->tell(m_pressed);
    }

private:
    const std::shared_ptr<Ear> m_ear;
    const std::shared_ptr<const std::function<void()>> m_pressed;
};

X11ForeignPresses::X11ForeignPresses(std::shared_ptr<X11Events> events)
    : m_events(std::move(events))
{
}

std::unique_ptr<PressWatch> X11ForeignPresses::watch(std::function<void()> pressed)
{
    auto ear = m_ear.lock();
    if (!ear) {
        const std::uint8_t extension = inputExtension();
        if (extension == 0 || !select(true))
            return nullptr;
        ear = std::make_shared<Ear>(m_events, extension);
        m_ear = ear;
    }
    return std::make_unique<Watch>(std::move(ear), std::move(pressed));
}

} // namespace brindlecam
