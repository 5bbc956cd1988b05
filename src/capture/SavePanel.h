#pragma once

#include "notices/FilePanel.h"

#include <functional>
#include <optional>

namespace brindlecam {

class Alerts;

/// Asks where a picture is to be saved: PNG files, starting in the captures folder. Never blocks
/// the loop, and steps aside for a capture together with what it asks. Main thread.
class SavePanel final : public FilePanel {
    Q_OBJECT

public:
    using Done = std::function<void(std::optional<QString> path)>;

    /// Opens the panel; makes `folder` first when it is missing. `done` receives the full path,
    /// which ends in ".png" and may be written to, or nothing when the user cancelled. The panel
    /// deletes itself when it closes.
    static SavePanel* open(Alerts& alerts, const QString& folder, const QString& fileName,
                           Done done);

    /// Saves under the name that was typed, asks before it replaces a file, or enters a folder.
    void accept() override;

private:
    SavePanel(Alerts& alerts, const QString& folder, const QString& fileName);

    void ask(const QString& path);
    void take(const QString& path);

    Alerts& m_alerts;
    QString m_path; ///< empty until there is one
};

} // namespace brindlecam
