#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace brindlecam {

/// Whose windows Qt makes.
enum class WindowSystem {
    none, ///< nobody's: Qt was told to do without a desktop (offscreen, as tests do)
    x11,
    wayland,
};

/// The session as it was found at start, before the application object was made. The choice of
/// ports goes by it and asks nothing else; it does not change afterwards.
struct Session {
    enum class XServer {
        unasked, ///< nobody wanted to know: an X server inside of Wayland may start when it is
                 ///< asked
        silent,
        itself,        ///< draws the desktop
        insideWayland, ///< a guest in somebody else's (XWayland)
    };

    bool namesX11 = false;              ///< DISPLAY is set
    bool namesWayland = false;          ///< WAYLAND_DISPLAY is set
    bool isCalledWayland = false;       ///< by who logged the user in
    std::optional<WindowSystem> told{}; ///< to Qt, by QT_QPA_PLATFORM; nothing: it may choose
    XServer xServer = XServer::unasked;
    /// The interfaces that the Wayland compositor offers. Nobody asks for them yet.
    std::vector<QByteArray> waylandGlobals{};
    /// Whether somebody has this name on the session's message bus, or would be started for it.
    /// Asks when it is called, and waits for the bus. So it comes last in a condition: where
    /// another part of it decides, as on X11, nobody waits before the first frame.
    std::function<bool(const QString& name)> hasBusName = [](const QString&) { return false; };

    /// What Qt gets: chosen from all that stands above.
    WindowSystem windowSystem = WindowSystem::none;

    [[nodiscard]] bool hasDesktop() const { return windowSystem != WindowSystem::none; }

    /// A Wayland compositor draws the desktop, with or without an X server inside.
    [[nodiscard]] bool isWayland() const
    {
        return namesWayland || isCalledWayland || told == WindowSystem::wayland ||
               xServer == XServer::insideWayland;
    }
};

} // namespace brindlecam
