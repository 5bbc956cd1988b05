#include "platform/x11/windows/PanelWindow.h"

#include "base/RepaintArea.h"
#include "platform/x11/connection/ServerClock.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"

#include <QBackingStore>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <chrono>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

// A window manager that hears late of a window's end hands its focus to another one, although an
// overlay has got the keyboard meanwhile.
constexpr std::chrono::seconds kInsistence{1};
constexpr int kMostInsistences = 3;
constexpr qreal kRoomToGrow = 1.35; ///< to each side: more than half as much again is never kept
constexpr int kMostCorrections = 8; ///< per show(); more means somebody disagrees

QRect nativeGeometry(const QScreen& screen)
{
    // Qt keeps a screen's origin in pixels and divides its size only.
    return {screen.geometry().topLeft(),
            (QSizeF(screen.geometry().size()) * screen.devicePixelRatio()).toSize()};
}

QScreen* screenOf(const QRect& native)
{
    for (QScreen* screen : QGuiApplication::screens()) {
        if (nativeGeometry(*screen).contains(native.center()))
            return screen;
    }
    return QGuiApplication::primaryScreen();
}

/// The nearest rectangle that Qt can express on that screen.
QRect roundedPoints(const QRect& native, const QScreen& screen)
{
    const QPointF origin(screen.geometry().topLeft());
    const qreal scale = screen.devicePixelRatio();
    return {(origin + (QPointF(native.topLeft()) - origin) / scale).toPoint(),
            (QSizeF(native.size()) / scale).toSize()};
}

} // namespace

PanelWindow::PanelWindow(QWidget& widget, PanelRole role, const x11::PanelTraits& traits,
                         std::shared_ptr<X11Events> events, x11::ServerClock& clock)
    : m_widget(widget)
    , m_role(role)
    , m_traits(traits)
    , m_events(std::move(events))
    , m_clock(clock)
{
    const bool dialog = role == PanelRole::dialog;
    m_widget.setWindowFlags(dialog ? m_widget.windowFlags() | m_traits.flags : m_traits.flags);
    m_widget.setAttribute(Qt::WA_ShowWithoutActivating, !m_traits.activates);
    m_widget.setAttribute(Qt::WA_TranslucentBackground, m_traits.blends);
    if (!dialog)
        m_widget.winId();
    m_subscription = m_events->listen([this](const auto& event) { return handle(event); });
}

xcb_window_t PanelWindow::id() const
{
    return static_cast<xcb_window_t>(m_widget.internalWinId());
}

void PanelWindow::show(const QRect& native)
{
    m_native = native;
    m_asked.settle(native);
    m_correctionsLeft = kMostCorrections;
    // Dialogs come from hot keys and commands, of which Qt knows no time.
    const bool activates =
        m_traits.activates && !m_widget.testAttribute(Qt::WA_ShowWithoutActivating);
    const xcb_timestamp_t now = activates ? m_clock.now() : XCB_CURRENT_TIME;
    if (!native.isEmpty()) {
        QScreen* screen = screenOf(native);
        m_widget.setScreen(screen);
        m_widget.setGeometry(roundedPoints(native, *screen));
    }
    m_widget.winId();
    watchWindow();
    setHints();
    setUserTime(now);
    place();
    cut();
    m_widget.show();
    // QXcbWindow::show() has written the time of Qt's last event over ours, and may have placed the
    // window by points again.
    setUserTime(now);
    place();
    x11::raise(id());
    xcb_flush(x11::connection());
    if (activates)
        focus();
}

void PanelWindow::holdPainting(std::function<void()> mayPaint)
{
    m_widget.winId();
    m_hold.reset(); // first, or it lifts what the new one lays down
    m_hold = std::make_unique<PaintHold>(m_widget, std::move(mayPaint));
}

void PanelWindow::paintAll()
{
    if (m_hold)
        m_hold->paintAll();
}

void PanelWindow::moveTo(const QRect& native)
{
    m_native = native;
    m_asked.ask(native);
    m_correctionsLeft = 0; // a hand moves on before the window manager has answered
    place();
    xcb_flush(x11::connection());
}

QRect PanelWindow::nativeRect()
{
    const auto seen = x11::rectOnRoot(id());
    if (!seen || m_native.isEmpty())
        return seen.value_or(QRect());
    if (m_correctionsLeft == 0 && !m_asked.leadTo(*seen)) {
        m_native = *seen;
        m_asked.settle(*seen);
    }
    return m_native;
}

void PanelWindow::setShape(const QRegion& pixels)
{
    if (!m_shape && pixels.isEmpty())
        return;
    m_shape = pixels;
    cut();
    xcb_flush(x11::connection());
}

void PanelWindow::cut()
{
    if (m_shape)
        x11::setShape(id(), *m_shape);
}

bool PanelWindow::setOverFullScreen(bool over)
{
    if (m_role != PanelRole::pin || m_traits.managed == !over)
        return false;
    m_traits.managed = !over;
    m_reserved = 0;
    const bool shown = m_widget.isVisible();
    const QRect native = nativeRect();
    // A new window: the old one may be in the window manager's frame for some time yet.
    m_widget.windowHandle()->destroy();
    m_widget.setWindowFlags(m_traits.flags |
                            (over ? Qt::BypassWindowManagerHint : Qt::WindowFlags()));
    m_widget.winId();
    if (shown)
        show(native);
    return shown;
}

void PanelWindow::raise()
{
    x11::raise(id());
}

void PanelWindow::lowerBelow(const PanelWindow& other)
{
    if (!m_traits.managed)
        x11::lowerBelow(id(), x11::childOfRoot(other.id()));
}

void PanelWindow::watchWindow()
{
    QWindow* window = m_widget.windowHandle();
    if (m_role != PanelRole::overlay || m_watched == window)
        return;
    window->installEventFilter(this);
    m_watched = window;
}

void PanelWindow::setHints()
{
    using x11::atom;
    using x11::setProperty32;
    constexpr std::uint32_t kNeverUnredirect = 2;
    constexpr std::uint32_t kEveryDesktop = 0xffffffff;
    // Not by Qt's attributes: beside the type they list KDE's "override" (frameless) and NORMAL.
    setProperty32(id(), atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, {atom(m_traits.type)});
    if (m_role == PanelRole::dialog)
        return;
    setProperty32(id(), atom("_NET_WM_BYPASS_COMPOSITOR"), XCB_ATOM_CARDINAL, {kNeverUnredirect});
    setProperty32(id(), atom("_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, {0});
    if (m_role == PanelRole::pin && !x11::isViewable(id())) {
        setProperty32(id(), atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
                      {atom("_NET_WM_STATE_ABOVE"), atom("_NET_WM_STATE_STICKY"),
                       atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")});
        setProperty32(id(), atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, {kEveryDesktop});
    }
}

void PanelWindow::setUserTime(xcb_timestamp_t time)
{
    if (time == XCB_CURRENT_TIME)
        return;
    const auto property = x11::atom("_NET_WM_USER_TIME");
    x11::setProperty32(id(), property, XCB_ATOM_CARDINAL, {time});
    const auto timeWindow =
        x11::property32(id(), x11::atom("_NET_WM_USER_TIME_WINDOW"), XCB_ATOM_WINDOW);
    if (!timeWindow.empty())
        x11::setProperty32(timeWindow.front(), property, XCB_ATOM_CARDINAL, {time});
}

void PanelWindow::setSizeHints()
{
    // From scale 1.5 on Qt (6.4 and 6.11) makes sizes go in steps of a point, which is two pixels:
    // QPlatformWindow::windowSizeIncrement. Drop it when only windows that want steps have them.
    constexpr std::uint32_t kUserPlaceAndSize = 1 | 2;
    constexpr std::uint32_t kHasGravity = 512;
    constexpr std::size_t kGravityIndex = 17;
    std::vector<std::uint32_t> hints(kGravityIndex + 1);
    hints.front() = kUserPlaceAndSize | kHasGravity;
    hints[kGravityIndex] = XCB_GRAVITY_STATIC;
    x11::setProperty32(id(), XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
}

void PanelWindow::place()
{
    if (m_native.isEmpty())
        return;
    if (m_traits.managed)
        setSizeHints();
    x11::configure(id(), m_native);
}

// Qt (6.4 and 6.11, QXcbBackingStoreImage::resize) takes new memory, shared with the server, when a
// window grows, which takes longer than painting; what has room it keeps while it needs over half.
void PanelWindow::reserve(QSize pixels)
{
    QBackingStore* store = m_widget.backingStore();
    if (m_role != PanelRole::pin || !store)
        return;
    const qint64 needed = qint64(pixels.width()) * pixels.height();
    const bool resized = m_reserved > 0;
    if (needed > m_reserved && resized) {
        const QSize roomy = pixels * kRoomToGrow;
        m_reserved = qint64(roomy.width()) * roomy.height();
        store->resize(roomy / m_widget.devicePixelRatioF());
    } else if (!resized || 2 * needed <= m_reserved) {
        m_reserved = needed;
    }
}

void PanelWindow::keepPlace(const QRect& actual)
{
    if (m_native.isEmpty() || m_correctionsLeft == 0)
        return;
    if (actual != m_native) {
        --m_correctionsLeft;
        place();
        xcb_flush(x11::connection());
    } else if (!m_traits.keepsPlace) {
        m_correctionsLeft = 0;
    }
}

// A window in a window manager's frame is told its place in that.
void PanelWindow::keepPlaceOnRoot()
{
    if (const auto actual = x11::rectOnRoot(id()))
        keepPlace(*actual);
}

// A dialog that somebody asks for again may have been minimised or left on another desktop.
void PanelWindow::bringBack()
{
    if (m_role != PanelRole::dialog || !m_widget.isVisible() || !x11::isPutAway(id()))
        return;
    setUserTime(m_clock.now());
    x11::moveToThisDesktop(id());
    m_widget.setWindowState(m_widget.windowState() & ~Qt::WindowMinimized);
    xcb_map_window(x11::connection(), id()); // for window managers that know no activation
    focusNow();
}

void PanelWindow::focus()
{
    bringBack();
    m_focusWhenMapped = !x11::isViewable(id());
    if (!m_focusWhenMapped)
        focusNow();
}

void PanelWindow::focusNow()
{
    m_focusWhenMapped = false;
    if (m_role == PanelRole::overlay) {
        m_insists.setRemainingTime(kInsistence);
        m_insistencesLeft = kMostInsistences;
    }
    if (m_traits.managed && x11::hasWindowManager()) {
        x11::raise(id());
        x11::activate(id(), m_clock.now());
    } else {
        if (m_role == PanelRole::dialog)
            x11::raise(id());
        x11::setFocus(id());
    }
}

void PanelWindow::insistOnFocus(const xcb_focus_out_event_t& event)
{
    if (event.event != id() || m_insistencesLeft == 0 || m_insists.hasExpired() ||
        !x11::isViewable(id()))
        return;
    const x11::Owned<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
    if (!focus || x11::isOurs(focus->focus))
        return;
    --m_insistencesLeft;
    x11::setFocus(id());
}

// Qt paints a window at its MapNotify, or its first frame is put there. The exposure that comes
// from the same request would only send the whole of it to the server once more.
bool PanelWindow::cameWithTheMap(const xcb_expose_event_t& event)
{
    if (event.window != id() || m_mappedBy != event.sequence)
        return false;
    if (event.count == 0)
        m_mappedBy.reset();
    return true;
}

// What Qt would send may never have been painted.
X11Events::Verdict PanelWindow::expose(const xcb_expose_event_t& event)
{
    if (cameWithTheMap(event))
        return X11Events::Verdict::swallow;
    if (event.window != id() || !m_hold)
        return X11Events::Verdict::pass;
    const qreal scale = m_widget.devicePixelRatioF();
    m_hold->repaint(repaintArea(
        {event.x / scale, event.y / scale, event.width / scale, event.height / scale}, scale));
    return X11Events::Verdict::swallow;
}

X11Events::Verdict PanelWindow::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (notify.window != id())
            return X11Events::Verdict::pass;
        reserve({notify.width, notify.height});
        if (!m_traits.managed)
            keepPlace({notify.x, notify.y, notify.width, notify.height});
        else if (m_correctionsLeft > 0)
            keepPlaceOnRoot();
    } else if (kindOf(event) == XCB_MAP_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (notify.window != id())
            return X11Events::Verdict::pass;
        if (m_traits.managed)
            keepPlaceOnRoot();
        if (m_focusWhenMapped)
            focusNow();
        m_mappedBy = notify.sequence;
    } else if (kindOf(event) == XCB_FOCUS_OUT) {
        insistOnFocus(reinterpret_cast<const xcb_focus_out_event_t&>(event));
    } else if (kindOf(event) == XCB_EXPOSE) {
        return expose(reinterpret_cast<const xcb_expose_event_t&>(event));
    }
    return X11Events::Verdict::pass;
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched != QGuiApplication::focusWindow())
        focus();
    return QObject::eventFilter(watched, event);
}

} // namespace brindlecam
