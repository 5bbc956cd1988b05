#pragma once

#include "desktop/support/Process.h"
#include "desktop/support/x11/Connection.h"
#include "desktop/support/x11/XServer.h"

#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>

namespace brindlecam::desktop {

enum class WindowManager { openbox, none };
enum class Compositor { none, picom };
enum class MessageBus { none, session };
enum class Tray { none, tint2, trayer };

/// What stands on a test's screen before the program starts.
struct DesktopOptions {
    XServerOptions server{};
    WindowManager windowManager = WindowManager::openbox;
    Compositor compositor = Compositor::none;
    MessageBus bus = MessageBus::none;
    Tray tray = Tray::none;
    bool patterned = false; ///< a wallpaper on which every shift by a pixel shows
};

/// A private X server with the usual inhabitants of a desktop, each started and seen to be ready.
/// Private home folders keep this machine's settings out.
class Desktop final {
public:
    explicit Desktop(const DesktopOptions& options);

    [[nodiscard]] XServer& server() { return m_server; }
    /// A connection for looking at the server, shared by whoever needs no events.
    [[nodiscard]] const Connection& connection() const { return m_connection; }
    /// What a program on this desktop sees: DISPLAY, the session bus or none, no Wayland.
    [[nodiscard]] QProcessEnvironment environment() const;

    void startWindowManager();
    void endWindowManager();
    /// Stops the window manager in its tracks, as a loaded machine would, and lets it go on.
    void pauseWindowManager();
    void resumeWindowManager();
    void startCompositor();
    void endCompositor();
    void startTray(Tray tray);
    void endTray();

private:
    std::unique_ptr<Process> start(const QString& program, const QStringList& arguments) const;
    void startBus();

    QTemporaryDir m_home;
    XServer m_server;
    Connection m_connection;
    QString m_busAddress;
    std::unique_ptr<Process> m_bus;
    std::unique_ptr<Process> m_windowManager;
    std::unique_ptr<Process> m_compositor;
    std::unique_ptr<Process> m_tray;
};

} // namespace brindlecam::desktop
