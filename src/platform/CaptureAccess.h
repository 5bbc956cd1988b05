#pragma once

namespace brindlecam {

/// The system's permission to read the screen. Main thread.
class CaptureAccess {
public:
    virtual ~CaptureAccess() = default;

    /// Whether this system asks for a permission at all. Without one a failed grab is just a
    /// failed grab.
    [[nodiscard]] virtual bool needsPermission() const = 0;

    /// Asks for the permission, letting the system show its own prompt; true when it is given.
    virtual bool request() = 0;

    /// Opens the system's settings where the permission is given.
    virtual void openSettings() = 0;
};

} // namespace brindlecam
