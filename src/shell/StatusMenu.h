#pragma once

#include "base/KeyCombo.h"
#include "preferences/CaptureAction.h"

#include <QMenu>
#include <QString>

#include <functional>
#include <map>
#include <optional>

namespace brindlecam {

class Prefs;

/// The menu of the status item: built once, afterwards only titles, shortcuts and what is enabled
/// change. An entry without a callback is disabled: its room is not there. Main thread.
class StatusMenu final {
public:
    StatusMenu(const Prefs& prefs, KeyNaming naming);

    /// Receives the item's represented object: "area".
    std::function<void(const QString&)> onCapture;
    /// Receives the item's represented object: "area|3".
    std::function<void(const QString&)> onCaptureDelayed;
    std::function<void()> onOpenFolder;
    std::function<void()> onSettings;
    std::function<void()> onUpdate;
    std::function<void()> onAbout;
    std::function<void()> onQuit;
    /// Whether an action's room is there.
    std::function<bool(CaptureAction)> isAvailable;

    /// Brings shortcuts and enabled items up to date; also done whenever the menu opens. Hosts that
    /// draw the menu themselves keep a copy, so call it when anything changes.
    void refresh();
    /// The same for shortcuts alone, when the hot keys are reloaded.
    void refreshShortcuts();
    void setUpdateTitle(const QString& title);

    [[nodiscard]] QMenu& menu() { return m_menu; }

private:
    QAction* add(const char* title, const std::function<void()>& callback);
    void addCaptures();
    void addDelayed();
    void show(QAction& action, const std::optional<KeyCombo>& combo) const;

    const Prefs& m_prefs;
    const KeyNaming m_naming;
    QMenu m_menu;
    QMenu m_delayed;
    std::map<CaptureAction, QAction*> m_captureItems; ///< owned by the menu, like the others
    QAction* m_folderItem = nullptr;
    QAction* m_settingsItem = nullptr;
    QAction* m_updateItem = nullptr;
    QAction* m_aboutItem = nullptr;
    QAction* m_quitItem = nullptr;
};

} // namespace brindlecam
