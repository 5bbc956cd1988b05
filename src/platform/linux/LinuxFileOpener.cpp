#include "platform/linux/LinuxFileOpener.h"

#include <QDesktopServices>
#include <QUrl>

namespace brindlecam {

bool LinuxFileOpener::openFolder(const QString& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace brindlecam
