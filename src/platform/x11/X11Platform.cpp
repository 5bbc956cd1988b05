#include "platform/x11/X11Platform.h"

#include "base/Text.h"
#include "platform/x11/clipboard/X11Pasteboard.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/desktop/X11Displays.h"
#include "platform/x11/desktop/X11WindowList.h"
#include "platform/x11/desktop/XEmbedTrayHosts.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/grab/X11Grabber.h"
#include "platform/x11/keys/X11FrontApplication.h"
#include "platform/x11/keys/X11HotKeys.h"
#include "platform/x11/keys/X11InputGrabs.h"
#include "platform/x11/windows/X11Panels.h"

#include <QGuiApplication>
#include <QThreadPool>

#include <xcb/xcb.h>

namespace brindlecam::X11Platform {

namespace {

constexpr const char* kQtPlatform = "QT_QPA_PLATFORM";
constexpr const char* kQtName = "xcb";

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

Error noDisplay()
{
    return Error{text("Brindlecam necesita un entorno gráfico: no hay DISPLAY.")};
}

} // namespace

std::optional<Error> prepare()
{
    if (qgetenv("DISPLAY").isEmpty() && qgetenv("WAYLAND_DISPLAY").isEmpty())
        return noDisplay();
    // An X server inside a Wayland session shows black instead of the other programs' windows.
    if (isWayland())
        return Error{text("Brindlecam todavía necesita X11.")};
    if (!canConnect())
        return noDisplay();
    if (!qEnvironmentVariableIsSet(kQtPlatform))
        qputenv(kQtPlatform, kQtName);
    return std::nullopt;
}

bool isSpoken()
{
    return QGuiApplication::platformName() == QLatin1String(kQtName);
}

// X11 asks for no permission to read the screen: that port stays the null one.
void add(Platform& platform)
{
    platform.displays = std::make_unique<X11Displays>();
    const auto pixels = std::make_shared<ServerPixels>();
    platform.grabber = std::make_unique<X11Grabber>(pixels);
    platform.windowList = std::make_unique<X11WindowList>();
    const auto events = std::make_shared<X11Events>();
    platform.hotKeys = std::make_unique<X11HotKeys>(events);
    platform.inputGrabs = std::make_unique<X11InputGrabs>();
    platform.frontApplication = std::make_unique<X11FrontApplication>(events);
    platform.panels = std::make_unique<X11Panels>(events, pixels);
    platform.pasteboard = std::make_unique<X11Pasteboard>(
        [](std::function<void()> job) { QThreadPool::globalInstance()->start(std::move(job)); });
    platform.trayHosts = std::make_unique<XEmbedTrayHosts>();
}

} // namespace brindlecam::X11Platform
