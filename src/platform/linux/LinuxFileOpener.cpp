#include "platform/linux/LinuxFileOpener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace brindlecam {

bool LinuxFileOpener::openFolder(const QString& path)
{
    return QFileInfo(path).isDir() && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace brindlecam
