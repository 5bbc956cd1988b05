#include "capture/SavePanel.h"

#include "base/Text.h"
#include "notices/Alerts.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QPixmapCache>
#include <QShortcut>

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
    : QFileDialog(nullptr, text("Guardar captura"), folder)
    , m_alerts(alerts)
{
    // Ours, not the desktop's: it has to stay on top, step aside for a capture and come back.
    setOption(DontUseNativeDialog);
    setOption(DontConfirmOverwrite); // Qt asks by QMessageBox::warning(), which blocks the loop
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilter(text("Imágenes PNG") + QStringLiteral(" (*.png)"));
    selectFile(fileName);
    forbidDeleting();
}

// Qt's styles keep what they have painted under names that hold the key of the widget's own palette
// (QStyleHelper::uniqueName, 6.4 and 6.11): a quarter of a megabyte for each panel, of no use to
// the next. Drop it when equal palettes have equal keys.
SavePanel::~SavePanel()
{
    QPixmapCache::clear();
    // That leaves the names. The cache drops them when it next tidies up, half a minute after
    // something was put in.
    QPixmapCache::insert(QPixmap(1, 1));
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

// Before it deletes a file Qt (6.4 and 6.11) asks by QMessageBox::warning(), which blocks the loop
// and does not step aside. Drop it when it does neither.
void SavePanel::forbidDeleting()
{
    if (auto* action = findChild<QAction*>(QStringLiteral("qt_delete_action")))
        action->setVisible(false);
    for (QShortcut* shortcut : findChildren<QShortcut*>()) {
        if (shortcut->key() == QKeySequence(QKeySequence::Delete))
            delete shortcut;
    }
}

void SavePanel::accept()
{
    const QStringList files = selectedFiles();
    if (files.isEmpty() || QFileInfo(files.first()).isDir()) {
        QFileDialog::accept(); // goes there
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
