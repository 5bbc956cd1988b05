#pragma once

#include <QString>

namespace brindlecam {

/// Where the copies on one display meet: full paths, empty where they have no place to.
struct InstancePlace {
    QString socket;
    QString lock;

    [[nodiscard]] bool exists() const { return !socket.isEmpty(); }

    /// The place of this process's user and display.
    [[nodiscard]] static InstancePlace standard();
};

} // namespace brindlecam
