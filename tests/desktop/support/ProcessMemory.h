#pragma once

#include <QtGlobal>

namespace brindlecam::desktop {

/// What a process has in memory, as the kernel tells anybody. KiB.
struct ProcessMemory {
    qint64 own = 0;    ///< nobody else's
    qint64 shared = 0; ///< segments that others may have, too, as far as they were touched

    /// Nothing where there is no such process.
    [[nodiscard]] static ProcessMemory of(qint64 pid);
};

} // namespace brindlecam::desktop
