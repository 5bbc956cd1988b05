#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

class QObject;

namespace brindlecam {

/// Where releases are announced. Main thread.
class ReleaseFeed {
public:
    virtual ~ReleaseFeed() = default;

    /// Whether there is a place to ask at all. As long as the program runs.
    [[nodiscard]] virtual bool exists() const = 0;
    /// What is announced now, or none when that can't be found out. `done` runs later, on the main
    /// thread, and not once `context` is gone.
    virtual void fetch(QObject* context, std::function<void(std::optional<QByteArray>)> done) = 0;
};

} // namespace brindlecam
