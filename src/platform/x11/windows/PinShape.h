#pragma once

#include <QRegion>
#include <QSize>
#include <QSizeF>

#include <functional>

namespace brindlecam::x11 {

/// How much of a pin's window is to be seen while it grows and shrinks. A widget hears of its sizes
/// late, and in points, so it and its window may each be ahead of the other. Values only; native
/// pixels.
class PinShape final {
public:
    using WindowSize = std::function<QSize()>;

    /// It opens with this size.
    void open(QSize size);
    /// It is to have this size next. Answers what the window is cut to before that: else the middle
    /// of one that has grown by several steps would lie outside of its shape, and the pointer on
    /// something else. `shown` is what the widget paints until then.
    [[nodiscard]] QSize ask(QSize size, QSize shown);

    /// What a widget of this size paints: what was asked for, exactly, once it has about that size.
    /// Until then, and when the window manager has other ideas, what it has. `ratio` is how many
    /// pixels make one of its points.
    [[nodiscard]] QSize shown(QSizeF widget, qreal ratio) const;
    /// What the window is cut to when the widget paints that much. `window` is asked only when the
    /// widget may be behind it: what the window has grown to meanwhile is not cut off.
    [[nodiscard]] QSize cut(QSize shown, const WindowSize& window) const;

    /// The pixels of a rounded rectangle at the origin, for where nothing softens its corners.
    [[nodiscard]] static QRegion rounded(QSize pixels, qreal radius);

private:
    QSize m_asked;
    bool m_changed = false; ///< since it was opened
};

} // namespace brindlecam::x11
