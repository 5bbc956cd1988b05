#include "platform/linux/LinuxPlatform.h"

#include "base/Text.h"
#include "platform/linux/LinuxFileOpener.h"
#include "platform/linux/LinuxTextRecognizer.h"
#include "platform/linux/LinuxTrayHosts.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/StatusNotifierHosts.h"
#include "platform/linux/UnixQuitSignals.h"
#include "platform/linux/x11/ServerPixels.h"
#include "platform/linux/x11/X11Displays.h"
#include "platform/linux/x11/X11Events.h"
#include "platform/linux/x11/X11FrontApplication.h"
#include "platform/linux/x11/X11Grabber.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/x11/X11InputGrabs.h"
#include "platform/linux/x11/X11Panels.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "platform/linux/x11/X11WindowList.h"
#include "platform/linux/x11/XEmbedTrayHosts.h"
#include "platform/null/NullPlatform.h"

#include <QGuiApplication>
#include <QThreadPool>

#include <xcb/xcb.h>

#include <malloc.h>

namespace brindlecam::LinuxPlatform {

namespace {

constexpr const char* kQtPlatform = "QT_QPA_PLATFORM";

/// Whether Qt was told to use a back end without a desktop (offscreen, as tests do).
bool wantsNoDesktop()
{
    const QByteArray chosen = qgetenv(kQtPlatform);
    return !chosen.isEmpty() && !chosen.startsWith("xcb") && !chosen.startsWith("wayland");
}

bool isWayland()
{
    return !qgetenv("WAYLAND_DISPLAY").isEmpty() || qgetenv("XDG_SESSION_TYPE") == "wayland" ||
           qgetenv(kQtPlatform).startsWith("wayland");
}

/// Qt ends the process when it can't connect, so the connection is tried before.
bool canConnect()
{
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool connected = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return connected;
}

/// Encoders use buffers as large as the screen. The allocator would learn from the first of them to
/// keep the later ones, once per thread, for good; a fixed limit makes it give each back at once.
void giveLargeBuffersBack()
{
#ifdef __GLIBC__
    constexpr int kLargeBytes = 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargeBytes);
#endif
}

Error noDisplay()
{
    return Error{text("Brindlecam necesita un entorno gráfico: no hay DISPLAY.")};
}

std::unique_ptr<TrayHosts> makeTrayHosts()
{
    std::vector<std::unique_ptr<TrayHosts>> kinds;
    kinds.push_back(std::make_unique<StatusNotifierHosts>());
    kinds.push_back(std::make_unique<XEmbedTrayHosts>());
    return std::make_unique<LinuxTrayHosts>(std::move(kinds));
}

/// X11 asks for no permission to read the screen: that port stays the null one.
void addX11(Platform& platform)
{
    platform.displays = std::make_unique<X11Displays>();
    const auto pixels = std::make_shared<ServerPixels>();
    platform.grabber = std::make_unique<X11Grabber>(pixels);
    platform.windowList = std::make_unique<X11WindowList>();
    const auto events = std::make_shared<X11Events>();
    platform.hotKeys = std::make_unique<X11HotKeys>(events);
    platform.inputGrabs = std::make_unique<X11InputGrabs>();
    platform.frontApplication = std::make_unique<X11FrontApplication>(events);
    platform.panels = std::make_unique<X11Panels>(events, *platform.grabber, pixels);
    platform.pasteboard = std::make_unique<X11Pasteboard>(
        [](std::function<void()> job) { QThreadPool::globalInstance()->start(std::move(job)); });
    platform.trayHosts = makeTrayHosts();
}

} // namespace

std::optional<Error> prepare()
{
    giveLargeBuffersBack();
    SessionBus::neverLaunch();
    if (wantsNoDesktop())
        return std::nullopt;
    if (qgetenv("DISPLAY").isEmpty() && qgetenv("WAYLAND_DISPLAY").isEmpty())
        return noDisplay();
    // An X server inside a Wayland session shows black instead of the other programs' windows.
    if (isWayland())
        return Error{text("Brindlecam todavía necesita X11.")};
    if (!canConnect())
        return noDisplay();
    if (!qEnvironmentVariableIsSet(kQtPlatform))
        qputenv(kQtPlatform, "xcb");
    return std::nullopt;
}

Platform make()
{
    Platform platform = makeNullPlatform();
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return platform;
    platform.fileOpener = std::make_unique<LinuxFileOpener>();
    platform.textRecognizer = std::make_unique<LinuxTextRecognizer>();
    platform.quitSignals = std::make_unique<UnixQuitSignals>();
    platform.keyNaming = KeyNaming::words;
    platform.interfaceFont = QStringLiteral("Inter");
    platform.textCatalogue = QStringLiteral(":/i18n/brindlecam_linux.qm");
    addX11(platform);
    return platform;
}

} // namespace brindlecam::LinuxPlatform
