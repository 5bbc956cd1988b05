#pragma once

#include "capture/CaptureController.h"
#include "capture/CaptureFailure.h"
#include "capture/CaptureResults.h"
#include "capture/Countdown.h"
#include "capture/Output.h"
#include "drawer/RecentDrawer.h"
#include "history/History.h"
#include "long/LongSessions.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "pins/PinnedCaptures.h"
#include "preferences/Config.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/FeedProcess.h"
#include "settings/Updater.h"
#include "shell/AppDelegate.h"

#include <QUrl>

#include <optional>

namespace brindlecam {

class SingleInstance;
struct Platform;

/// The composition root: makes one object of each room on top of the platform and hands on
/// references. Lives as long as the program, and begins when its delegate is told to.
class Program final {
public:
    /// The references outlive it. New versions are looked for where `feed` says.
    Program(Platform& platform, CaptureFailure::Voice voice, SingleInstance& instance,
            const std::optional<QUrl>& feed = Config::updateFeedUrl());
    /// Ends the program, unless that is done, and waits for it.
    ~Program();

    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }
    [[nodiscard]] CaptureController& captureController() { return m_captureController; }
    [[nodiscard]] RecentDrawer& recentDrawer() { return m_drawer; }
    [[nodiscard]] Updater& updater() { return m_updater; }
    [[nodiscard]] PinnedCaptures& pinnedCaptures() { return m_pinnedCaptures; }

private:
    Defaults m_defaults;
    Prefs m_prefs;
    Activity m_activity;
    Alerts m_alerts;
    Toast m_toast;
    History m_history;
    Output m_output;
    CaptureFailure m_captureFailure;
    CaptureResults m_captureResults;
    Countdown m_countdown;
    PinnedCaptures m_pinnedCaptures;
    LongSessions m_longCaptures;
    RecentDrawer m_drawer;
    CaptureController m_captureController;
    FeedProcess m_feed;
    Updater m_updater;
    AppDelegate m_delegate;
};

} // namespace brindlecam
