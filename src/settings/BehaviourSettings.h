#pragma once

#include "base/Executor.h"

#include <QWidget>

class QCheckBox;

namespace brindlecam {

class Alerts;
class FolderRow;
class LoginBox;
class Prefs;
class SettingsHost;
struct Platform;

/// What captures do by themselves, where they go, and when the program runs. Main thread.
class BehaviourSettings final : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the widget.
    BehaviourSettings(const Prefs& prefs, Platform& platform, Alerts& alerts, SettingsHost& host,
                      const Executor& executor);

    /// Shows what is stored.
    void refresh();

    [[nodiscard]] QCheckBox& autoCopyBox() { return *m_autoCopyBox; }
    [[nodiscard]] QCheckBox& autoSaveBox() { return *m_autoSaveBox; }
    [[nodiscard]] QCheckBox& autoSaveAreaBox() { return *m_autoSaveAreaBox; }
    [[nodiscard]] FolderRow& folderRow() { return *m_folderRow; }
    [[nodiscard]] QCheckBox& loupeBox() { return *m_loupeBox; }
    [[nodiscard]] QCheckBox& lightGifsBox() { return *m_lightGifsBox; }
    [[nodiscard]] LoginBox& loginBox() { return *m_loginBox; }
    [[nodiscard]] QCheckBox& updatesBox() { return *m_updatesBox; }

private:
    void layOut();
    void store(const char* key, const QCheckBox& box) const;
    void toggleAutoSave() const;

    const Prefs& m_prefs;
    QCheckBox* m_autoCopyBox;
    QCheckBox* m_autoSaveBox;
    QCheckBox* m_autoSaveAreaBox;
    FolderRow* m_folderRow;
    QCheckBox* m_loupeBox;
    QCheckBox* m_lightGifsBox;
    LoginBox* m_loginBox;
    QCheckBox* m_updatesBox;
};

} // namespace brindlecam
