#pragma once

#include "desktop/support/AccessBus.h"
#include "desktop/support/ClientWindow.h"
#include "desktop/support/Clipboard.h"
#include "desktop/support/ClipboardManager.h"
#include "desktop/support/DropTarget.h"
#include "desktop/support/Holdings.h"
#include "desktop/support/Input.h"
#include "desktop/support/Pager.h"
#include "desktop/support/Rival.h"
#include "desktop/support/Screen.h"
#include "desktop/support/Windows.h"

#include <QProcessEnvironment>
#include <QRect>
#include <QSize>
#include <QString>

#include <memory>
#include <vector>

namespace brindlecam::desktop {

/// One monitor of the screen, in native pixels of the whole of it.
struct Monitor {
    QString name;
    QRect pixels;
};

struct ScreenOptions {
    QSize pixels{1280, 800};
    int depth = 24;
    QString without{};               ///< an X extension that the server lacks, as in "MIT-SHM"
    std::vector<Monitor> monitors{}; ///< empty: one monitor as large as the screen
};

enum class WindowManager { openbox, none };
enum class Compositor { none, picom };
enum class MessageBus { none, session };
enum class Tray { none, tint2, trayer };
enum class Accessibility { off, on };

/// What stands on a test's screen before the program starts.
struct DesktopOptions {
    ScreenOptions screen{};
    WindowManager windowManager = WindowManager::openbox;
    Compositor compositor = Compositor::none;
    MessageBus bus = MessageBus::none;
    Tray tray = Tray::none;
    Accessibility accessibility = Accessibility::off; ///< on: controls can be found by name
    bool patterned = false; ///< a wallpaper on which every shift by a pixel shows
};

/// A private desktop with its usual inhabitants, a person in front of it and other programs around
/// the one that is tested. What draws it, and which protocol that speaks, nobody needs to know who
/// tests by it. Private home folders keep this machine's settings out. One thread.
class Desktop {
public:
    /// Returns once everything asked for is seen to be ready; ends the test run otherwise.
    [[nodiscard]] static std::unique_ptr<Desktop> start(const DesktopOptions& options);
    Desktop() = default;
    virtual ~Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// What a program on this desktop sees: the screen, the session bus or none.
    [[nodiscard]] virtual QProcessEnvironment environment() const = 0;
    /// What the program under test sees: with Accessibility::on it has a session bus even where
    /// nobody else has one; only assistive technology is there.
    [[nodiscard]] virtual QProcessEnvironment programsEnvironment() const = 0;
    /// Where the program speaks to assistive technology; null without.
    [[nodiscard]] virtual const AccessBus* accessBus() const = 0;
    /// What tells it from others of this machine, as in ":7".
    [[nodiscard]] virtual QString name() const = 0;
    /// The process that draws the screen.
    [[nodiscard]] virtual qint64 serverPid() const = 0;
    /// What the desktop holds for a process.
    [[nodiscard]] virtual Holdings holdings(qint64 pid) const = 0;

    // A person's hands, eyes and means.
    [[nodiscard]] virtual Input& input() = 0;
    [[nodiscard]] virtual Screen& screen() = 0;
    [[nodiscard]] virtual Clipboard& clipboard() = 0;
    [[nodiscard]] virtual Pager& pager() = 0;
    /// What is on the screen, window by window.
    [[nodiscard]] virtual Windows& windows() = 0;

    // Other programs. Each lives as long as what is returned, at most as long as the desktop.
    /// Returns once the window can be seen.
    [[nodiscard]] virtual std::unique_ptr<ClientWindow>
    open(const ClientWindowOptions& options) = 0;
    [[nodiscard]] virtual std::unique_ptr<Rival> rival() = 0;
    /// Returns once it serves.
    [[nodiscard]] virtual std::unique_ptr<ClipboardManager> startClipboardManager(KeepsBy way) = 0;

    [[nodiscard]] virtual std::unique_ptr<DropTarget> openDropTarget(const QRect& pixels,
                                                                     DropManners manners) = 0;

    /// Another program copies a text; returns once it is on the clipboard.
    virtual void copyElsewhere(const QString& text) = 0;

    // Monitors and keyboard: plugged in, unplugged, changed.
    /// Makes these the monitors, removing all others. At least one.
    virtual void setMonitors(const std::vector<Monitor>& monitors) = 0;
    /// Plugs one more in, or gives one of several another place or size in one go.
    virtual void setMonitor(const Monitor& monitor) = 0;
    /// Unplugs one of several.
    virtual void removeMonitor(const QString& name) = 0;
    /// Gives the only monitor, and with it the whole screen, another size; it can only shrink.
    virtual void setMode(QSize pixels) = 0;
    /// Gives the keyboard another layout, as in "es"; with an option of it, as in "compose:rctrl".
    virtual void setKeyboard(const QString& layout, const QString& option = {}) = 0;
    /// Tiles the desktop behind all windows with a picture, also under a compositor.
    virtual void hangWallpaper(const QImage& picture) = 0;

    // Inhabitants that come and go.
    virtual void startWindowManager() = 0;
    virtual void endWindowManager() = 0;
    /// Ends it as a crash would.
    virtual void killWindowManager() = 0;
    /// Stops the window manager in its tracks, as a loaded machine would, and lets it go on.
    virtual void pauseWindowManager() = 0;
    virtual void resumeWindowManager() = 0;
    [[nodiscard]] virtual bool hasWindowManager() const = 0;
    virtual void startCompositor() = 0;
    virtual void endCompositor() = 0;
    [[nodiscard]] virtual bool hasCompositor() const = 0;
    /// A new one; whoever knew the one before does not hear of it.
    virtual void startMessageBus() = 0;
    virtual void endMessageBus() = 0;
    virtual void startTray(Tray tray) = 0;
    virtual void endTray() = 0;
    [[nodiscard]] virtual bool hasTray() const = 0;
};

} // namespace brindlecam::desktop
