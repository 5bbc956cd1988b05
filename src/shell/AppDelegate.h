#pragma once

#include "base/Background.h"
#include "base/Executor.h"
#include "preferences/CaptureAction.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsWindowController.h"
#include "shell/Actions.h"
#include "shell/HotKeyCenter.h"
#include "shell/InstanceMessages.h"
#include "shell/StatusItem.h"
#include "shell/StatusMenu.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>
#include <set>

namespace brindlecam {

class AboutPanel;
class Activity;
class Alerts;
class CaptureController;
class Countdown;
class History;
class LongCaptures;
class Output;
class Prefs;
class RecentDrawer;
class SingleInstance;
class Toast;
class Updater;
struct Command;
struct Platform;

/// What the user can ask of the program as a whole, with all the ways to ask for it: hot keys, the
/// status item's menus, other copies. Stands above the rooms that do it and calls them. Begins and
/// ends the program in its order. Main thread.
class AppDelegate final : public QObject, public SettingsHost {
    Q_OBJECT

public:
    /// What it works with; all of it outlives the delegate.
    struct Rooms {
        Platform& platform;
        Prefs& prefs;
        Alerts& alerts;
        Toast& toast;
        Activity& activity;
        const History& history;
        Output& output;
        Countdown& countdown;
        LongCaptures& longCaptures;
        CaptureController& captures;
        RecentDrawer& drawer;
        Updater& updater;
        SingleInstance& instance;
        Executor executor; ///< for what may wait for a disk
    };

    explicit AppDelegate(const Rooms& rooms);

    /// Lets other copies ask from now on. False: there is nowhere to be asked.
    [[nodiscard]] bool listen();
    /// Takes the hot keys, shows the status item, and does what the program was started for; the
    /// first-run message comes after that.
    void start(const Command& command);
    /// Begins nothing new from now on, and ends the main loop once every capture has reached its
    /// place and the clipboard is handed on. Does not wait for that.
    void quit();

    /// Whether captures and what shows them can be begun: the program goes on.
    [[nodiscard]] bool mayBegin() const;

    /// Chosen in a menu: in 0.3 s, when that has closed.
    void capture(CaptureAction action);
    /// Now: hot keys, commands, the end of a countdown. Nothing when it may not begin.
    void perform(CaptureAction action);
    /// Counts down these seconds, then performs.
    void captureDelayed(CaptureAction action, int seconds);
    /// The running program was opened again: an area capture in 0.3 s.
    void reopen();
    /// What another copy of the program asks for.
    [[nodiscard]] InstanceAnswer answer(const InstanceRequest& request);

    [[nodiscard]] bool offersUpdates() const override;
    /// Makes the folder when it is missing and opens it; says so when nothing can.
    void openCapturesFolder() override;
    /// Shows the settings, as they are now.
    void showSettings();
    /// Opens the page of the newer version that is known, else looks for one.
    void updateFromMenu();
    void showAbout();
    /// Says once and never again where the program lives.
    void showWelcomeIfFirstRun();

    /// Takes the hot keys anew, as the settings have them; menus that show them follow.
    void reloadHotKeys() override;
    void releaseHotKeys() override;
    [[nodiscard]] const std::set<CaptureAction>& failedHotKeys() const override;

    /// Title of the update item while this newer version is known, or none is.
    [[nodiscard]] static QString updateTitle(const std::optional<QString>& newerVersion);

    [[nodiscard]] HotKeyCenter& hotKeyCenter() { return m_hotKeyCenter; }
    [[nodiscard]] SettingsWindowController& settings() { return m_settings; }
    /// The one that the tray's host shows.
    [[nodiscard]] StatusMenu& menu() { return m_hostedMenu; }

private:
    [[nodiscard]] std::function<void()> errand(const Command& command);
    [[nodiscard]] InstanceAnswer answerOther(ProgramAction id);
    void tidyFolders() const;
    void leave();
    void noteDrawer();
    void toggleDrawer();
    void refreshUpdateItem();

    Rooms m_rooms;
    const Background m_background;
    const Actions m_actions;
    HotKeyCenter m_hotKeyCenter;
    StatusMenu m_hostedMenu; ///< the tray host's
    StatusMenu m_ownMenu;    ///< what a plain click on the status item opens
    std::optional<StatusItem> m_statusItem;
    QPointer<AboutPanel> m_about;
    bool m_drawerWasOpen = false;        ///< when a menu was opened last
    SettingsWindowController m_settings; ///< goes first: a recorder takes the hot keys again
};

} // namespace brindlecam
