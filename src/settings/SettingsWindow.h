#pragma once

#include "base/Executor.h"
#include "settings/ShortcutSettings.h"

#include <QWidget>

#include <functional>

namespace brindlecam {

class Alerts;
class BehaviourSettings;
class History;
class MarkerSettings;
class PrivacySettings;
class Prefs;
class SettingsHost;
struct Platform;

/// Every setting of the user's in two columns. What is changed counts at once. Main thread; points.
class SettingsWindow final : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the window.
    struct Rooms {
        Platform& platform;
        Prefs& prefs;
        const History& history;
        Alerts& alerts;
        SettingsHost& host;
        Executor executor; ///< for what may wait for a disk
    };

    explicit SettingsWindow(const Rooms& rooms);

    /// Puts every control in line with what is stored.
    void refresh();

    /// Closed by the user. Filled by whoever makes it.
    std::function<void()> onClosed = [] {};

    [[nodiscard]] ShortcutSettings& shortcuts() { return *m_shortcuts; }
    [[nodiscard]] MarkerSettings& marker() { return *m_marker; }
    [[nodiscard]] BehaviourSettings& behaviour() { return *m_behaviour; }
    [[nodiscard]] PrivacySettings& privacy() { return *m_privacy; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    ShortcutSettings* m_shortcuts;
    MarkerSettings* m_marker;
    BehaviourSettings* m_behaviour;
    PrivacySettings* m_privacy;
};

} // namespace brindlecam
