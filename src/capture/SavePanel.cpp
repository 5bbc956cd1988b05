#include "capture/SavePanel.h"

#include "base/Text.h"
#include "notices/Alerts.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace brindlecam {

namespace {

/// Whatever else the name looks like: what is written is a PNG.
QString withEnding(const QString& path)
{
    const auto ending = QStringLiteral(".png");
    return path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending;
}

} // namespace

SavePanel::SavePanel(Alerts& alerts, const QString& folder, const QString& fileName)
    : FilePanel(text("Guardar captura"), folder)
    , m_alerts(alerts)
{
    setOption(DontConfirmOverwrite); // Qt asks by QMessageBox::warning(), which blocks the loop
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilter(text("Imágenes PNG") + QStringLiteral(" (*.png)"));
    selectFile(fileName);
}

SavePanel* SavePanel::open(Alerts& alerts, const QString& folder, const QString& fileName,
                           Done done)
{
    QDir().mkpath(folder);
    auto* panel = new SavePanel(alerts, folder, fileName);
    // Connected after the panel is handed over: `done` may bring other dialogs back, and this one
    // is no longer among them by then.
    alerts.show(panel);
    connect(panel, &QDialog::finished, panel, [panel, done = std::move(done)](int result) {
        done(result == Accepted ? std::optional(panel->m_path) : std::nullopt);
    });
    return panel;
}

void SavePanel::accept()
{
    const QStringList files = selectedFiles();
    if (files.isEmpty() || QFileInfo(files.first()).isDir()) {
        FilePanel::accept(); // goes there
        return;
    }
    const QString path = withEnding(files.first());
    const QFileInfo there(path);
    if (there.isDir())
        setDirectory(path);
    else if (there.exists() || there.isSymLink())
        ask(path);
    else
        take(path);
}

void SavePanel::ask(const QString& path)
{
    m_alerts.show({.message = text("“%1” ya existe").arg(QFileInfo(path).fileName()),
                   .informative = text("Si lo reemplazas, se pierde lo que contiene ahora."),
                   .buttons = {text("Reemplazar"), text("Cancelar")},
                   .defaultButton = 1, // a held Return must not go through both dialogs
                   .over = this},
                  [this, path](std::optional<int> chosen) {
                      if (chosen == 0)
                          take(path);
                      else if (isVisible())
                          m_alerts.bringForward(*this);
                  });
}

void SavePanel::take(const QString& path)
{
    m_path = path;
    QDialog::accept();
}

} // namespace brindlecam
