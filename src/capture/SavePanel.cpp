#include "capture/SavePanel.h"

#include "app/Alerts.h"
#include "base/Text.h"

#include <QDir>
#include <QFileDialog>

namespace brindlecam::SavePanel {

void open(Alerts& alerts, const QString& folder, const QString& fileName,
          std::function<void(std::optional<QString>)> done)
{
    QDir().mkpath(folder);
    auto* panel = new QFileDialog(nullptr, text("Guardar captura"), folder);
    // Ours, not the desktop's: it has to stay on top, step aside for a capture and come back.
    panel->setOption(QFileDialog::DontUseNativeDialog);
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setFileMode(QFileDialog::AnyFile);
    panel->setNameFilter(text("Imágenes PNG") + QStringLiteral(" (*.png)"));
    panel->setDefaultSuffix(QStringLiteral("png"));
    panel->selectFile(fileName);
    // Connected after the panel is handed over: `done` may bring other dialogs back, and this one
    // is no longer among them by then.
    alerts.show(panel);
    QObject::connect(panel, &QDialog::finished, panel, [panel, done](int result) {
        const QStringList files = panel->selectedFiles();
        if (result == QDialog::Accepted && !files.isEmpty())
            done(files.first());
        else
            done(std::nullopt);
    });
}

} // namespace brindlecam::SavePanel
