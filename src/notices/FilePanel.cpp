#include "notices/FilePanel.h"

#include <QAction>
#include <QPixmapCache>
#include <QShortcut>

namespace brindlecam {

FilePanel::FilePanel(const QString& title, const QString& folder)
    : QFileDialog(nullptr, title, folder)
{
    // Ours, not the desktop's: it has to stay on top, step aside for a capture and come back.
    setOption(DontUseNativeDialog);
    forbidDeleting();
}

// Qt's styles keep what they have painted under names that hold the key of the widget's own palette
// (QStyleHelper::uniqueName, 6.4 and 6.11): a quarter of a megabyte for each panel, of no use to
// the next. Drop it when equal palettes have equal keys.
FilePanel::~FilePanel()
{
    QPixmapCache::clear();
    // That leaves the names. The cache drops them when it next tidies up, half a minute after
    // something was put in.
    QPixmapCache::insert(QPixmap(1, 1));
}

// Before it deletes a file Qt (6.4 and 6.11) asks by QMessageBox::warning(), which blocks the loop
// and does not step aside. Drop it when it does neither.
void FilePanel::forbidDeleting()
{
    if (auto* action = findChild<QAction*>(QStringLiteral("qt_delete_action")))
        action->setVisible(false);
    for (QShortcut* shortcut : findChildren<QShortcut*>()) {
        if (shortcut->key() == QKeySequence(QKeySequence::Delete))
            delete shortcut;
    }
}

} // namespace brindlecam
