#pragma once

#include <functional>

class QObject;

namespace brindlecam {

/// Whether the desktop has a place for status items. Main thread.
class TrayHosts {
public:
    virtual ~TrayHosts() = default;

    [[nodiscard]] virtual bool available() const = 0;

    /// `changed` runs on the main thread when a host appears, goes, or is replaced by another (so
    /// that the status item is made anew), as long as `context` lives.
    virtual void whenChanged(QObject* context, std::function<void()> changed) = 0;
};

} // namespace brindlecam
