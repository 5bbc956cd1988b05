#pragma once

#include <QImage>
#include <QRect>

#include <functional>

class QObject;

namespace brindlecam {

/// Whether the system blends windows with what lies beneath them, and what that is. Main thread;
/// rectangles are native pixels of the global desktop.
class Compositing {
public:
    virtual ~Compositing() = default;

    /// Whether translucent panels blend with what lies beneath. When they don't, a panel is shaped
    /// by its mask and paints itself over `backdrop`.
    [[nodiscard]] virtual bool blends() const = 0;

    /// `changed` runs when blends() may have changed, as long as `context` lives: for panels that
    /// stay on the screen. Messages are gone too soon to mind.
    virtual void whenChanged(QObject* context, std::function<void()> changed) = 0;

    /// What the screen shows in this rectangle now, for panels that must paint their own backdrop;
    /// null when it can't be read.
    [[nodiscard]] virtual QImage backdrop(const QRect& native) = 0;
};

} // namespace brindlecam
