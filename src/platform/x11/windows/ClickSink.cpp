#include "platform/x11/windows/ClickSink.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <array>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kMostPresses = 2; // those of a triple click that come after the first one

/// As far around the pointer as a double click may stray.
QRect aroundPointer()
{
    const x11::Owned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        x11::connection(), xcb_query_pointer(x11::connection(), x11::root()), nullptr));
    if (!pointer)
        return {};
    const int reach = qRound(QGuiApplication::styleHints()->mouseDoubleClickDistance() *
                             qGuiApp->devicePixelRatio());
    const QPoint centre(pointer->root_x, pointer->root_y);
    return {centre - QPoint(reach, reach), centre + QPoint(reach, reach)};
}

xcb_window_t makeClickWindow(const QRect& place)
{
    if (place.isEmpty())
        return XCB_WINDOW_NONE;
    const xcb_window_t window = xcb_generate_id(x11::connection());
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_BUTTON_PRESS |
                                                     XCB_EVENT_MASK_BUTTON_RELEASE |
                                                     XCB_EVENT_MASK_LEAVE_WINDOW};
    xcb_create_window(x11::connection(), XCB_COPY_FROM_PARENT, window, x11::root(),
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      static_cast<std::uint16_t>(place.width()),
                      static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    xcb_map_window(x11::connection(), window);
    xcb_flush(x11::connection());
    return window;
}

} // namespace

ClickSink::ClickSink(std::shared_ptr<X11Events> events, std::chrono::milliseconds left,
                     std::chrono::milliseconds interval, std::function<void()> ended)
    : m_events(std::move(events))
    , m_interval(interval)
    , m_ended(std::move(ended))
    , m_place(aroundPointer())
    , m_window(makeClickWindow(m_place))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { finish(); });
    m_timer.start(left);
    if (m_window != XCB_WINDOW_NONE)
        m_subscription = m_events->listen([this](const auto& event) { return handle(event); });
}

ClickSink::~ClickSink()
{
    if (m_window == XCB_WINDOW_NONE)
        return;
    xcb_destroy_window(x11::connection(), m_window);
    xcb_flush(x11::connection());
}

void ClickSink::raise()
{
    if (m_window == XCB_WINDOW_NONE)
        return;
    x11::raise(m_window);
    xcb_flush(x11::connection());
}

/// A pin or a save panel that the session has opened, and that a window manager raises as it likes.
bool ClickSink::isCovered(const xcb_generic_event_t& event) const
{
    if (kindOf(event) == XCB_MAP_NOTIFY)
        return reinterpret_cast<const xcb_map_notify_event_t&>(event).window != m_window;
    if (kindOf(event) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    return change.window == x11::root() && change.atom == x11::atom("_NET_CLIENT_LIST_STACKING");
}

X11Events::Verdict ClickSink::handle(const xcb_generic_event_t& event)
{
    if (isCovered(event)) {
        raise();
        return X11Events::Verdict::pass;
    }
    const int kind = kindOf(event);
    if (kind != XCB_BUTTON_PRESS && kind != XCB_BUTTON_RELEASE && kind != XCB_LEAVE_NOTIFY)
        return X11Events::Verdict::pass;
    // Presses, releases and leaving have the same fields up to those that are read here.
    const auto& pointer = reinterpret_cast<const xcb_button_press_event_t&>(event);
    if (pointer.event != m_window)
        return X11Events::Verdict::pass;
    if (kind == XCB_BUTTON_PRESS && pointer.detail != XCB_BUTTON_INDEX_1) {
        finish(); // another button or the wheel: that is no double click
    } else if (kind == XCB_BUTTON_PRESS) {
        m_held = true; // the release comes here, too, wherever the pointer is then
        m_timer.stop();
    } else if (kind == XCB_BUTTON_RELEASE) {
        const bool taken = std::exchange(m_held, false);
        m_taken += taken ? 1 : 0;
        if (m_taken == kMostPresses)
            finish();
        else if (taken)
            m_timer.start(m_interval);
    } else if (m_place.contains(pointer.root_x, pointer.root_y)) {
        raise(); // something has come between
    } else if (!m_held) {
        finish();
    }
    return X11Events::Verdict::swallow;
}

void ClickSink::finish()
{
    // The call may destroy this object, and with it the function.
    if (const auto ended = std::exchange(m_ended, nullptr))
        ended();
}

} // namespace brindlecam
