#pragma once

#include "desktop/support/BusDaemon.h"
#include "desktop/support/Desktop.h"
#include "desktop/support/Process.h"
#include "desktop/support/x11/Connection.h"
#include "desktop/support/x11/X11Clipboard.h"
#include "desktop/support/x11/X11Hardware.h"
#include "desktop/support/x11/X11Input.h"
#include "desktop/support/x11/X11Pager.h"
#include "desktop/support/x11/X11Screen.h"
#include "desktop/support/x11/X11Windows.h"
#include "desktop/support/x11/XServer.h"

#include <QTemporaryDir>

namespace brindlecam::desktop {

/// A desktop on a private X server.
class X11Desktop final : public Desktop {
public:
    explicit X11Desktop(const DesktopOptions& options);

    [[nodiscard]] QProcessEnvironment environment() const override;
    [[nodiscard]] QProcessEnvironment programsEnvironment() const override;
    [[nodiscard]] const AccessBus* accessBus() const override { return m_accessBus.get(); }
    [[nodiscard]] QString name() const override { return m_server.display(); }
    [[nodiscard]] qint64 serverPid() const override { return m_server.pid(); }
    [[nodiscard]] Holdings holdings(qint64 pid) const override;

    [[nodiscard]] Input& input() override { return m_input; }
    [[nodiscard]] Screen& screen() override { return m_screen; }
    [[nodiscard]] Clipboard& clipboard() override { return m_clipboard; }
    [[nodiscard]] Pager& pager() override { return m_pager; }
    [[nodiscard]] Windows& windows() override { return m_windows; }

    [[nodiscard]] std::unique_ptr<ClientWindow> open(const ClientWindowOptions& options) override;
    [[nodiscard]] std::unique_ptr<Rival> rival() override;
    [[nodiscard]] std::unique_ptr<ClipboardManager> startClipboardManager(KeepsBy way) override;
    [[nodiscard]] std::unique_ptr<DropTarget> openDropTarget(const QRect& pixels,
                                                             DropManners manners) override;
    void copyElsewhere(const QString& text) override;

    void setMonitors(const std::vector<Monitor>& monitors) override
    {
        m_hardware.setMonitors(monitors);
    }
    void setMonitor(const Monitor& monitor) override { m_hardware.setMonitor(monitor); }
    void removeMonitor(const QString& name) override { m_hardware.removeMonitor(name); }
    void setMode(QSize pixels) override { m_hardware.setMode(pixels); }
    void setKeyboard(const QString& layout, const QString& option) override
    {
        m_hardware.setKeyboard(layout, option);
    }
    void hangWallpaper(const QImage& picture) override;

    void startWindowManager() override;
    void endWindowManager() override;
    void killWindowManager() override;
    void pauseWindowManager() override;
    void resumeWindowManager() override;
    [[nodiscard]] bool hasWindowManager() const override { return m_connection.hasWindowManager(); }
    void startCompositor() override;
    void endCompositor() override;
    [[nodiscard]] bool hasCompositor() const override;
    void startMessageBus() override;
    void endMessageBus() override;
    void startTray(Tray tray) override;
    void endTray() override;
    [[nodiscard]] bool hasTray() const override;

private:
    std::unique_ptr<Process> start(const QString& program, const QStringList& arguments) const;
    void startAccessibility();

    QTemporaryDir m_home;
    XServer m_server;
    X11Hardware m_hardware;
    Connection m_connection;
    std::unique_ptr<BusDaemon> m_bus;         ///< of the session
    std::unique_ptr<BusDaemon> m_programsBus; ///< of the program under test alone
    std::unique_ptr<AccessBus> m_accessBus;
    std::unique_ptr<Process> m_windowManager;
    std::unique_ptr<Process> m_compositor;
    std::unique_ptr<Process> m_tray;
    std::unique_ptr<Process> m_copier; ///< who else has copied something
    X11Input m_input;
    X11Screen m_screen;
    X11Clipboard m_clipboard;
    X11Pager m_pager;
    X11Windows m_windows;
};

} // namespace brindlecam::desktop
