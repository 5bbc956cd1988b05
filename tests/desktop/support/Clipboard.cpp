#include "desktop/support/Clipboard.h"

namespace brindlecam::desktop {

QImage Clipboard::picture()
{
    if (!isTaken())
        return {};
    return QImage::fromData(read("image/png").value_or(QByteArray()), "PNG");
}

} // namespace brindlecam::desktop
