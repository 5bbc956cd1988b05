#include "platform/x11/desktop/X11Displays.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/desktop/Struts.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QHash>
#include <QScreen>

#include <xcb/randr.h>

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

struct Monitor {
    QString name;
    QRect native;
    bool primary;
};

bool hasMonitors()
{
    // Monitors came with RandR 1.5.
    const auto* const extension = xcb_get_extension_data(x11::connection(), &xcb_randr_id);
    if (!extension || !extension->present)
        return false;
    const x11::Owned<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        x11::connection(), xcb_randr_query_version(x11::connection(), 1, 5), nullptr));
    return version && std::pair(version->major_version, version->minor_version) >=
                          std::pair<std::uint32_t, std::uint32_t>(1, 5);
}

/// Names of atoms never change, so each is asked for once.
QString atomName(xcb_atom_t atom)
{
    static QHash<xcb_atom_t, QString> known;
    if (const auto found = known.constFind(atom); found != known.constEnd())
        return *found;
    const x11::Owned<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(
        x11::connection(), xcb_get_atom_name(x11::connection(), atom), nullptr));
    if (!reply)
        return {};
    return *known.insert(atom, QString::fromUtf8(xcb_get_atom_name_name(reply.get()),
                                                 xcb_get_atom_name_name_length(reply.get())));
}

std::vector<Monitor> readMonitors()
{
    static const bool available = hasMonitors();
    if (!available)
        return {};
    const x11::Owned<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        x11::connection(), xcb_randr_get_monitors(x11::connection(), x11::root(), 1), nullptr));
    if (!reply)
        return {};
    std::vector<Monitor> monitors;
    for (auto item = xcb_randr_get_monitors_monitors_iterator(reply.get()); item.rem > 0;
         xcb_randr_monitor_info_next(&item)) {
        const QRect native(item.data->x, item.data->y, item.data->width, item.data->height);
        // Mirrored displays show the same pixels: one of them stands for all.
        const bool mirrored =
            std::any_of(monitors.begin(), monitors.end(),
                        [&](const Monitor& other) { return other.native == native; });
        if (!native.isEmpty() && !mirrored)
            monitors.push_back({atomName(item.data->name), native, item.data->primary != 0});
    }
    return monitors;
}

/// The root window as it is now; empty when the server is gone.
QSize desktopSize()
{
    const x11::Owned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        x11::connection(), xcb_get_geometry(x11::connection(), x11::root()), nullptr));
    return geometry ? QSize(geometry->width, geometry->height) : QSize();
}

qreal scaleOf(const QString& name)
{
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->name() == name)
            return screen->devicePixelRatio();
    }
    const QScreen* const primary = QGuiApplication::primaryScreen();
    return primary ? primary->devicePixelRatio() : 1;
}

} // namespace

X11Displays::X11Displays()
{
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_context, [this](QScreen* screen) {
        watch(screen);
        noteChange();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_context,
                     [this] { noteChange(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_context,
                     [this] { noteChange(); });
    for (QScreen* screen : QGuiApplication::screens())
        watch(screen);
    const auto* const randr = xcb_get_extension_data(x11::connection(), &xcb_randr_id);
    if (randr && randr->present)
        m_randrEvent = randr->first_event;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11Displays::~X11Displays() = default;

std::vector<ScreenInfo> X11Displays::screens() const
{
    auto screens = layout();
    const auto struts = Struts::read();
    const QSize desktop = desktopSize();
    for (ScreenInfo& screen : screens)
        screen.visibleFrame = Struts::visibleFrame(screen.native, desktop, struts);
    return screens;
}

std::vector<ScreenInfo> X11Displays::layout() const
{
    auto monitors = readMonitors();
    if (monitors.empty()) {
        const QSize desktop = desktopSize();
        if (desktop.isEmpty())
            return {};
        const QScreen* const primary = QGuiApplication::primaryScreen();
        monitors.push_back({primary ? primary->name() : QString(), QRect({}, desktop), true});
    }
    std::stable_partition(monitors.begin(), monitors.end(),
                          [](const Monitor& monitor) { return monitor.primary; });

    std::vector<ScreenInfo> screens;
    for (const auto& [name, native, primary] : monitors)
        screens.push_back({name, native, scaleOf(name), native});
    return screens;
}

std::optional<QPoint> X11Displays::pointer() const
{
    return x11::pointer();
}

void X11Displays::whenChanged(QObject* context, std::function<void()> changed)
{
    // Whoever came before is told of a change that is only being noticed now.
    if (!m_listeners.any())
        m_told = layout();
    m_listeners.add(context, std::move(changed));
}

bool X11Displays::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    // RandR also tells of brightness and the like.
    if (mayMeanAChange(*static_cast<const xcb_generic_event_t*>(message)) &&
        !std::ranges::equal(layout(), m_told, &ScreenInfo::sameDisplay))
        noteChange();
    return false;
}

bool X11Displays::mayMeanAChange(const xcb_generic_event_t& event) const
{
    const int kind = event.response_type & 0x7f;
    // All that the server sends when only the list of monitors changes.
    if (kind == XCB_CONFIGURE_NOTIFY)
        return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == x11::root();
    return m_randrEvent != 0 && (kind == m_randrEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                 kind == m_randrEvent + XCB_RANDR_NOTIFY);
}

void X11Displays::watch(QScreen* screen)
{
    QObject::connect(screen, &QScreen::geometryChanged, &m_context, [this] { noteChange(); });
    QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, &m_context,
                     [this] { noteChange(); });
}

void X11Displays::noteChange()
{
    if (std::exchange(m_changeNoted, true))
        return;
    // Later, so that Qt has seen the event, too.
    QMetaObject::invokeMethod(
        &m_context, [this] { tellChange(); }, Qt::QueuedConnection);
}

void X11Displays::tellChange()
{
    m_changeNoted = false;
    m_told = layout();
    m_listeners.tell();
}

} // namespace brindlecam
