#pragma once

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

/// Where captures go, with buttons that choose another folder and open it. Main thread.
class FolderRow final : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the widget.
    FolderRow(const Prefs& prefs, Alerts& alerts, SettingsHost& host);

    /// Shows what is stored.
    void showFolder();

    [[nodiscard]] QLabel& folderLabel() { return *m_folderLabel; }
    [[nodiscard]] SmallButton& changeButton() { return *m_change; }
    [[nodiscard]] SmallButton& openButton() { return *m_open; }
    /// The panel that asks for another folder, or null.
    [[nodiscard]] FolderPanel* panel() const { return m_panel; }

private:
    void chooseFolder();

    const Prefs& m_prefs;
    Alerts& m_alerts;
    QLabel* m_folderLabel;
    SmallButton* m_change;
    SmallButton* m_open;
    QPointer<FolderPanel> m_panel;
};

/// A path as people write it: with a tilde for their home folder.
[[nodiscard]] QString abbreviatedPath(const QString& path, const QString& home);

} // namespace brindlecam
