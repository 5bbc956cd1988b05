#include "desktop/support/x11/Desktop.h"

#include "desktop/support/Patience.h"
#include "desktop/support/Pictures.h"

#include <csignal>

namespace brindlecam::desktop {

Desktop::Desktop(const DesktopOptions& options)
    : m_server(options.server)
    , m_connection(m_server.display())
{
    if (options.bus == MessageBus::session)
        startBus();
    // Before a compositor comes, which may miss one that is hung while it begins.
    if (options.patterned)
        hangWallpaper(m_connection, pattern({m_connection.screen().width_in_pixels,
                                             m_connection.screen().height_in_pixels}));
    if (options.windowManager == WindowManager::openbox)
        startWindowManager();
    if (options.compositor == Compositor::picom)
        startCompositor();
    if (options.tray != Tray::none)
        startTray(options.tray);
}

QProcessEnvironment Desktop::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name : {"WAYLAND_DISPLAY", "XAUTHORITY", "DESKTOP_SESSION", "SESSION_MANAGER",
                             "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "DESKTOP_STARTUP_ID",
                             "QT_QPA_PLATFORM", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"})
        environment.remove(QString::fromLatin1(name));
    const auto set = [&environment](const char* name, const QString& value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("DISPLAY", m_server.display());
    // A bus that does not exist, rather than none: without an address the libraries would look for
    // the one of whoever runs the tests.
    set("DBUS_SESSION_BUS_ADDRESS", m_busAddress.isEmpty()
                                        ? QStringLiteral("unix:path=%1/no-bus").arg(m_home.path())
                                        : m_busAddress);
    set("LC_ALL", QStringLiteral("C.UTF-8"));
    set("HOME", m_home.path());
    for (const auto& name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME",
                             "XDG_RUNTIME_DIR"})
        set(name, m_home.path());
    return environment;
}

void Desktop::startWindowManager()
{
    // Openbox announces itself before it listens, and a window mapped in between is lost; its
    // start-up command runs when that is over.
    m_windowManager = start(QStringLiteral("openbox"),
                            {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                             QStringLiteral("echo ready")});
    if (m_windowManager->awaitLine("ready").isEmpty())
        qFatal("openbox does not take over: %s", m_windowManager->log().constData());
}

void Desktop::endWindowManager()
{
    m_windowManager.reset();
}

void Desktop::pauseWindowManager()
{
    kill(static_cast<pid_t>(m_windowManager->pid()), SIGSTOP);
}

void Desktop::resumeWindowManager()
{
    kill(static_cast<pid_t>(m_windowManager->pid()), SIGCONT);
}

void Desktop::startCompositor()
{
    m_compositor =
        start(QStringLiteral("picom"), {QStringLiteral("--backend"), QStringLiteral("xrender"),
                                        QStringLiteral("--config"), QStringLiteral("/dev/null")});
    const auto owned = [this] { return m_connection.selectionOwner("_NET_WM_CM_S0") != 0; };
    if (!waitUntil(owned))
        qFatal("picom does not take over: %s", m_compositor->log().constData());
}

void Desktop::endCompositor()
{
    m_compositor.reset();
}

void Desktop::startTray(Tray tray)
{
    if (tray == Tray::tint2)
        m_tray = start(QStringLiteral("tint2"), {});
    else
        m_tray = start(QStringLiteral("trayer"),
                       {QStringLiteral("--edge"), QStringLiteral("bottom"),
                        QStringLiteral("--widthtype"), QStringLiteral("request")});
    const auto owned = [this] { return m_connection.selectionOwner("_NET_SYSTEM_TRAY_S0") != 0; };
    if (!waitUntil(owned))
        qFatal("no tray appears: %s", m_tray->log().constData());
}

void Desktop::endTray()
{
    m_tray.reset();
}

std::unique_ptr<Process> Desktop::start(const QString& program, const QStringList& arguments) const
{
    return std::make_unique<Process>(program, arguments, environment());
}

void Desktop::startBus()
{
    m_bus = start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address=1")});
    m_busAddress = QString::fromLatin1(m_bus->awaitLine("unix:"));
    if (m_busAddress.isEmpty())
        qFatal("no message bus: %s", m_bus->log().constData());
}

} // namespace brindlecam::desktop
