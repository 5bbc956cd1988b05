#pragma once

#include "base/Background.h"
#include "settings/FolderPanel.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class QLabel;

namespace brindlecam {

class Alerts;
class Prefs;
class SettingsHost;
class SmallButton;

/// Where captures go, with buttons that choose another folder and open it. Main thread; looks at
/// the disk on the executor.
class FolderRow final : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the widget.
    FolderRow(const Prefs& prefs, Alerts& alerts, SettingsHost& host, const Executor& executor);

    /// Shows what is stored.
    void showFolder();

    [[nodiscard]] QLabel& folderLabel() { return *m_folderLabel; }
    [[nodiscard]] SmallButton& changeButton() { return *m_change; }
    [[nodiscard]] SmallButton& openButton() { return *m_open; }
    /// The panel that asks for another folder, or null.
    [[nodiscard]] FolderPanel* panel() const { return m_panel; }

private:
    void chooseFolder();
    void ask(const QString& from);

    const Prefs& m_prefs;
    Alerts& m_alerts;
    const Background m_background;
    bool m_looks = false; ///< where to begin
    QLabel* m_folderLabel;
    SmallButton* m_change;
    SmallButton* m_open;
    QPointer<FolderPanel> m_panel;
};

/// A path as people write it: with a tilde for their home folder.
[[nodiscard]] QString abbreviatedPath(const QString& path, const QString& home);

} // namespace brindlecam
