#pragma once

#include <QByteArray>
#include <QRect>

#include <optional>

namespace brindlecam::desktop {

/// What another program does with something that is dragged over its window.
enum class DropManners {
    takes,   ///< and reads what is dropped as a list of files
    refuses, ///< says so while the pointer is over it
    dies,    ///< its connection breaks when something is first dragged over it
};

/// A window of another program that files can be dropped on. Serves on a thread of its own, as long
/// as it lives. Native pixels.
class DropTarget {
public:
    DropTarget() = default;
    virtual ~DropTarget() = default;
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;

    [[nodiscard]] virtual QRect pixels() const = 0;
    /// Whether something was dragged over it so far.
    [[nodiscard]] virtual bool wasEntered() const = 0;
    /// What was dropped last, as text/uri-list; none when nothing was.
    [[nodiscard]] virtual std::optional<QByteArray> dropped() const = 0;
};

} // namespace brindlecam::desktop
