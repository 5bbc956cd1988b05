#pragma once

#include <functional>

namespace brindlecam {

/// Whether the desktop has a place for status items. Main thread.
class TrayHosts {
public:
    virtual ~TrayHosts() = default;

    [[nodiscard]] virtual bool available() const = 0;

    /// Called on the main thread when a host appears, goes, or is replaced by another (so that the
    /// status item is made anew). One listener; an empty function stops it.
    virtual void setOnChange(std::function<void()> changed) = 0;
};

} // namespace brindlecam
