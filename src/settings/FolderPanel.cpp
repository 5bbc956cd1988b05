#include "settings/FolderPanel.h"

#include "base/Text.h"
#include "notices/Alerts.h"

#include <QFileInfo>

#include <utility>

namespace brindlecam {

QString FolderPanel::nearestThere(const QString& folder)
{
    QString there = folder;
    while (!QFileInfo(there).isDir() && there != QFileInfo(there).path())
        there = QFileInfo(there).path();
    return there;
}

FolderPanel::FolderPanel(Alerts& alerts, const QString& folder)
    : FilePanel(text("Carpeta de capturas"), folder)
    , m_alerts(alerts)
{
    setFileMode(Directory);
    setOption(ShowDirsOnly);
    setLabelText(Accept, text("Elegir"));
}

FolderPanel* FolderPanel::open(Alerts& alerts, const QString& folder,
                               std::function<void(const QString&)> done)
{
    auto* panel = new FolderPanel(alerts, folder);
    alerts.show(panel);
    connect(panel, &QDialog::accepted, panel,
            [panel, done = std::move(done)] { done(panel->m_path); });
    return panel;
}

// Qt says that a folder is not there by QMessageBox::warning(), which blocks the loop.
void FolderPanel::accept()
{
    const QStringList chosen = selectedFiles();
    const QFileInfo there(chosen.isEmpty() ? QString() : chosen.first());
    if (!there.isDir()) {
        m_alerts.show({.message = text("La carpeta “%1” no existe").arg(there.fileName()),
                       .informative = text("Elige otra o crea una nueva."),
                       .over = this});
        return;
    }
    m_path = there.absoluteFilePath();
    QDialog::accept();
}

} // namespace brindlecam
