#pragma once

#include "capture/CaptureController.h"
#include "capture/CaptureFailure.h"
#include "capture/CaptureResults.h"
#include "capture/Countdown.h"
#include "capture/Output.h"
#include "history/History.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "pins/PinnedCaptures.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/AppDelegate.h"
#include "shell/HotKeyCenter.h"
#include "shell/StatusItem.h"
#include "shell/StatusMenu.h"

#include <QObject>

#include <functional>
#include <optional>

namespace brindlecam {

/// The composition root: makes one object of each controller on top of the platform and fills the
/// callbacks through which the rooms meet, one Wire… file per room. Lives as long as the program.
class Program final {
public:
    explicit Program(Platform platform, CaptureFailure::Voice voice);
    ~Program();

    /// Takes the hot keys, shows the status item, and performs what the program was started for;
    /// the first-run message comes after that.
    void start(std::optional<CaptureAction> action);

    /// Once, as soon as the program begins to end: nothing new is done from then on.
    std::function<void()> onQuitting;

    /// Begins nothing new from now on, and ends the main loop once every capture has reached its
    /// place and the clipboard is handed on. Does not wait for that.
    void quit();

    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }
    [[nodiscard]] StatusMenu& menu() { return m_hostedMenu; }
    [[nodiscard]] HotKeyCenter& hotKeyCenter() { return m_hotKeyCenter; }
    [[nodiscard]] CaptureController& captureController() { return m_captureController; }
    [[nodiscard]] PinnedCaptures& pinnedCaptures() { return m_pinnedCaptures; }

private:
    void wireApp();
    void wireCapture();
    void wirePins();
    void tidyFolders() const;
    void leave();

    Platform m_platform;
    Defaults m_defaults;
    Prefs m_prefs;
    Activity m_activity;
    Alerts m_alerts;
    Toast m_toast;
    AppDelegate m_delegate;
    HotKeyCenter m_hotKeyCenter;
    StatusMenu m_hostedMenu; ///< the tray host's
    StatusMenu m_ownMenu;    ///< what a plain click on the status item opens
    History m_history;
    Output m_output;
    CaptureFailure m_captureFailure;
    CaptureResults m_captureResults;
    Countdown m_countdown;
    CaptureController m_captureController;
    PinnedCaptures m_pinnedCaptures;
    std::optional<StatusItem> m_statusItem;
    enum class Stage { running, quitting, left } m_stage = Stage::running;
    QObject m_context; ///< receives what others answer; gone before the rest
};

} // namespace brindlecam
