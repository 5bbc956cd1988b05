#pragma once

#include "desktop/support/Holdings.h"

#include <QString>

namespace brindlecam::desktop {
class Desktop;
}

namespace brindlecam::soak {

/// What a process takes of the machine, read from outside.
struct Footprint {
    qint64 own = 0;    ///< KiB of memory
    qint64 shared = 0; ///< KiB of memory shared with others
    int descriptors = 0;
    int threads = 0;
    desktop::Holdings held{};

    [[nodiscard]] static Footprint of(const desktop::Desktop& desktop, qint64 pid);
    /// Everything of it, for people.
    [[nodiscard]] QString text() const;
};

} // namespace brindlecam::soak
