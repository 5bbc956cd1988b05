#include "desktop/support/x11/X11Desktop.h"

#include "desktop/support/Patience.h"
#include "desktop/support/Pictures.h"
#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11ClipboardManager.h"
#include "desktop/support/x11/X11DropTarget.h"
#include "desktop/support/x11/X11Holdings.h"
#include "desktop/support/x11/X11Pictures.h"
#include "desktop/support/x11/X11Rival.h"

#include <QFile>

#include <csignal>

namespace brindlecam::desktop {

X11Desktop::X11Desktop(const DesktopOptions& options)
    : m_server(options.screen)
    , m_hardware(m_server.display())
    , m_connection(m_server.display())
    , m_input(m_server.display())
    , m_screen(m_server.display())
    , m_clipboard(m_server.display())
    , m_pager(m_server.display())
    , m_windows(m_server.display())
{
    if (!options.screen.monitors.empty())
        setMonitors(options.screen.monitors);
    if (options.bus == MessageBus::session)
        startMessageBus();
    if (options.accessibility == Accessibility::on)
        startAccessibility();
    // Before a compositor comes, which may miss one that is hung while it begins.
    if (options.patterned)
        hangWallpaper(pattern(m_screen.pixels().size()));
    if (options.windowManager == WindowManager::openbox)
        startWindowManager();
    if (options.compositor == Compositor::picom) {
        startCompositor();
        // It takes over before it paints; a desktop without a picture turns from black to grey.
        if (!options.patterned && !waitUntil([this] {
                return m_screen.pixel({0, 0}) != QColor(Qt::black);
            }))
            qFatal("picom does not paint: %s", m_compositor->log().constData());
    }
    if (options.tray != Tray::none)
        startTray(options.tray);
}

QProcessEnvironment X11Desktop::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name :
         {"WAYLAND_DISPLAY", "XAUTHORITY", "DESKTOP_SESSION", "SESSION_MANAGER",
          "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "DESKTOP_STARTUP_ID", "QT_QPA_PLATFORM",
          "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "AT_SPI_BUS_ADDRESS"})
        environment.remove(QString::fromLatin1(name));
    const auto set = [&environment](const char* name, const QString& value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("DISPLAY", m_server.display());
    // A bus that does not exist, rather than none: without an address the libraries would look for
    // the one of whoever runs the tests.
    set("DBUS_SESSION_BUS_ADDRESS",
        m_bus ? m_bus->address() : QStringLiteral("unix:path=%1/no-bus").arg(m_home.path()));
    set("LC_ALL", QStringLiteral("C.UTF-8"));
    set("HOME", m_home.path());
    for (const auto& name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME",
                             "XDG_RUNTIME_DIR"})
        set(name, m_home.path());
    return environment;
}

Holdings X11Desktop::holdings(qint64 pid) const
{
    return holdingsOf(m_connection, pid);
}

std::unique_ptr<ClientWindow> X11Desktop::open(const ClientWindowOptions& options)
{
    return std::make_unique<X11ClientWindow>(name(), options);
}

std::unique_ptr<Rival> X11Desktop::rival()
{
    return std::make_unique<X11Rival>(name());
}

std::unique_ptr<ClipboardManager> X11Desktop::startClipboardManager(KeepsBy way)
{
    return std::make_unique<X11ClipboardManager>(name(), way);
}

std::unique_ptr<DropTarget> X11Desktop::openDropTarget(const QRect& pixels, DropManners manners)
{
    return std::make_unique<X11DropTarget>(name(), pixels, manners);
}

void X11Desktop::copyElsewhere(const QString& text)
{
    QFile file(m_home.filePath(QStringLiteral("copied")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("nothing can be copied: %s", qPrintable(file.errorString()));
    file.close();
    auto copier = start(QStringLiteral("xclip"),
                        {QStringLiteral("-quiet"), QStringLiteral("-selection"),
                         QStringLiteral("clipboard"), QStringLiteral("-in"), file.fileName()});
    // It ends by itself where somebody else has copied since.
    const auto hasCopied = [&] {
        const auto owner = static_cast<std::uint32_t>(m_clipboard.owner());
        return makerOf(m_connection, owner) == copier->pid() || !copier->isRunning();
    };
    if (!waitUntil(hasCopied))
        qFatal("xclip does not copy: %s", copier->log().constData());
    m_copier = std::move(copier);
}

void X11Desktop::hangWallpaper(const QImage& picture)
{
    desktop::hangWallpaper(m_connection, picture);
}

bool X11Desktop::hasCompositor() const
{
    return m_connection.selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE;
}

bool X11Desktop::hasTray() const
{
    return m_connection.selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_WINDOW_NONE;
}

void X11Desktop::startWindowManager()
{
    // Openbox announces itself before it listens, and a window mapped in between is lost; its
    // start-up command runs when that is over.
    m_windowManager = start(QStringLiteral("openbox"),
                            {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                             QStringLiteral("echo ready")});
    if (m_windowManager->awaitLine("ready").isEmpty())
        qFatal("openbox does not take over: %s", m_windowManager->log().constData());
}

void X11Desktop::endWindowManager()
{
    m_windowManager.reset();
}

void X11Desktop::killWindowManager()
{
    m_windowManager->kill();
    m_windowManager.reset();
}

void X11Desktop::pauseWindowManager()
{
    kill(static_cast<pid_t>(m_windowManager->pid()), SIGSTOP);
}

void X11Desktop::resumeWindowManager()
{
    kill(static_cast<pid_t>(m_windowManager->pid()), SIGCONT);
}

void X11Desktop::startCompositor()
{
    m_compositor =
        start(QStringLiteral("picom"), {QStringLiteral("--backend"), QStringLiteral("xrender"),
                                        QStringLiteral("--config"), QStringLiteral("/dev/null")});
    if (!waitUntil([this] { return hasCompositor(); }))
        qFatal("picom does not take over: %s", m_compositor->log().constData());
}

void X11Desktop::endCompositor()
{
    m_compositor.reset();
}

void X11Desktop::startTray(Tray tray)
{
    if (tray == Tray::tint2)
        m_tray = start(QStringLiteral("tint2"), {});
    else
        m_tray = start(QStringLiteral("trayer"),
                       {QStringLiteral("--edge"), QStringLiteral("bottom"),
                        QStringLiteral("--widthtype"), QStringLiteral("request")});
    if (!waitUntil([this] { return hasTray(); }))
        qFatal("no tray appears: %s", m_tray->log().constData());
}

void X11Desktop::endTray()
{
    m_tray.reset();
}

std::unique_ptr<Process> X11Desktop::start(const QString& program,
                                           const QStringList& arguments) const
{
    return std::make_unique<Process>(program, arguments, environment());
}

void X11Desktop::startAccessibility()
{
    if (!m_bus)
        m_programsBus = std::make_unique<BusDaemon>(BusDaemon::Services::none, environment());
    m_accessBus = std::make_unique<AccessBus>((m_bus ? *m_bus : *m_programsBus).address());
}

QProcessEnvironment X11Desktop::programsEnvironment() const
{
    QProcessEnvironment all = environment();
    if (m_programsBus)
        all.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_programsBus->address());
    if (m_accessBus)
        all.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    return all;
}

void X11Desktop::startMessageBus()
{
    m_bus = std::make_unique<BusDaemon>(BusDaemon::Services::installed, environment());
    if (m_accessBus)
        startAccessibility();
}

void X11Desktop::endMessageBus()
{
    m_bus.reset();
}

} // namespace brindlecam::desktop
