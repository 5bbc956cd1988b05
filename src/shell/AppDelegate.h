#pragma once

#include "preferences/CaptureAction.h"
#include "shell/InstanceMessages.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class AboutPanel;
class Alerts;
class FileOpener;
class Prefs;
class StatusMenu;
class Toast;

/// What the user can ask of the program as a whole: dispatches actions to the rooms that do them,
/// through callbacks. An empty callback means that its room is not there. Main thread.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    AppDelegate(const Prefs& prefs, Alerts& alerts, Toast& toast, FileOpener& opener);

    std::function<void()> onArea;
    std::function<void()> onFullScreen;
    /// Shows the drawer of recent captures, or hides it.
    std::function<void()> onRecents;
    /// Hides the drawer; before every capture.
    std::function<void()> onHideRecents;
    /// Counts down these seconds, then performs.
    std::function<void(CaptureAction, int)> onCountdown;
    std::function<void()> onShowSettings;
    /// Downloads the known newer version, or looks for one.
    std::function<void()> onUpdate;
    std::function<void()> onQuit;
    /// Whether something runs that a capture would be refused for.
    std::function<bool()> isBusy;

    [[nodiscard]] bool isAvailable(CaptureAction action) const;

    /// In 0.3 s, when the menu has closed.
    void capture(CaptureAction action);
    /// Now: hot keys, commands, the end of a countdown. Nothing when it is not available.
    void perform(CaptureAction action);
    /// The represented object of a menu item: "area". Anything else is ignored.
    void captureFromMenu(const QString& representedObject);
    /// "area|3": action and seconds. Anything else is ignored.
    void captureDelayed(const QString& representedObject);
    /// The running program was opened again: an area capture in 0.3 s.
    void reopen();
    /// What another copy of the program asks for.
    [[nodiscard]] InstanceAnswer answer(const InstanceRequest& request);

    /// Makes the folder when it is missing and opens it; says so when nothing can.
    void openCapturesFolder();
    void showAbout();
    /// Says once and never again where the program lives.
    void showWelcomeIfFirstRun();

    /// Title of the update item while this newer version is known, or none is.
    [[nodiscard]] static QString updateTitle(const std::optional<QString>& newerVersion);

    /// Fills the menu's callbacks from here; call it when the rooms have filled this object's own.
    void wire(StatusMenu& menu);

private:
    const Prefs& m_prefs;
    Alerts& m_alerts;
    Toast& m_toast;
    FileOpener& m_opener;
    QPointer<AboutPanel> m_about;
};

} // namespace brindlecam
