#pragma once

#include <QtGlobal>

namespace brindlecam::desktop {

/// What the window system holds for a process: memory and things that its own books do not show.
struct Holdings {
    int connections = 0;
    int windows = 0;
    int pictures = 0;
    int others = 0; ///< cursors, regions, keys and the like
    qint64 pictureBytes = 0;
};

} // namespace brindlecam::desktop
