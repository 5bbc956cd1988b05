#pragma once

#include "desktop/support/x11/X11Hardware.h"
#include "x11/ThisDesktop.h"

#include <QRect>

namespace brindlecam::test {

/// Two monitors on the one virtual screen while it lives: LEFT at the origin, and RIGHT beside it,
/// lower and smaller. Native pixels.
class Monitors final {
public:
    static constexpr QRect kLeft{0, 0, 800, 600};
    static constexpr QRect kRight{800, 100, 640, 480};

    /// Waits until Qt knows them.
    Monitors();
    ~Monitors();
    Monitors(const Monitors&) = delete;
    Monitors& operator=(const Monitors&) = delete;

private:
    desktop::X11Hardware m_hardware{display()};
};

} // namespace brindlecam::test
