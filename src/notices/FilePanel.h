#pragma once

#include <QFileDialog>

namespace brindlecam {

/// Base of our file dialogs: Qt's own, kept from whatever would block the loop. Shown through
/// Alerts, so that it steps aside for a capture. Main thread.
class FilePanel : public QFileDialog {
    Q_OBJECT

public:
    ~FilePanel() override;

protected:
    /// Starts in `folder`, which should be there.
    FilePanel(const QString& title, const QString& folder);

private:
    void forbidDeleting();
};

} // namespace brindlecam
