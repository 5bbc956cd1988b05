#pragma once

#include "notices/FilePanel.h"

#include <functional>

namespace brindlecam {

class Alerts;

/// Asks for a folder. Never blocks the loop, and steps aside for a capture. Main thread.
class FolderPanel final : public FilePanel {
    Q_OBJECT

public:
    /// The folder, or the nearest above it that is there. As slow as the disk; any thread.
    [[nodiscard]] static QString nearestThere(const QString& folder);

    /// Starts in `folder`, which is there. `done` receives the full path of
    /// the folder that was chosen, and is not called when the user cancels. The panel deletes
    /// itself when it closes.
    static FolderPanel* open(Alerts& alerts, const QString& folder,
                             std::function<void(const QString& path)> done);

    /// Takes the folder, or says that there is none.
    void accept() override;

private:
    FolderPanel(Alerts& alerts, const QString& folder);

    Alerts& m_alerts;
    QString m_path;
};

} // namespace brindlecam
