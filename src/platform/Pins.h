#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>

#include <functional>
#include <memory>

class QMouseEvent;
class QWidget;

namespace brindlecam {

/// Where a pin lies: native pixels of the global desktop, and how many of them make a point there.
struct PinPlace {
    QRect native;
    qreal scale = 1;
};

/// The window of one pin: above all other windows, full-screen ones included, and on every desktop.
/// Whoever has it tells where it is to be; the system gets it there, in its own time. Main thread.
class PinSurface {
public:
    virtual ~PinSurface() = default;

    /// Shows the widget there; takes no focus.
    virtual void show(const PinPlace& place) = 0;
    /// Moves and resizes what was shown. The widget hears of its new size later.
    virtual void place(const PinPlace& place) = 0;
    /// Where it was put last, even if it is still on its way there, or where somebody else has
    /// moved it since; empty before it was shown.
    [[nodiscard]] virtual QRect rect() = 0;

    /// How large the widget is to paint itself now, in native pixels; its own size is in points and
    /// may lag behind.
    [[nodiscard]] virtual QSize pixels() const = 0;
    /// Whether the widget paints its corners transparent; else the system cuts them off.
    [[nodiscard]] virtual bool blends() const = 0;

    /// Where on the desktop a place on the widget is, in points from its top-left corner.
    [[nodiscard]] virtual QPoint onDesktop(QPointF place) = 0;

    /// A hand takes it; it has the keyboard then. Until letGo() a likeness of it may be what moves.
    virtual void grip() = 0;
    /// Where the hand that holds it was at this event of the widget, as exactly as the system knows
    /// it. Not where the pointer is by now: a hand that has let go moves on.
    [[nodiscard]] virtual QPoint hand(const QMouseEvent& event) = 0;
    virtual void letGo() = 0;
};

/// Makes windows for pins. Main thread.
class Pins {
public:
    virtual ~Pins() = default;

    /// A window for this widget, which outlives it, with corners of this radius in points.
    /// `changed` runs when blends() may have changed.
    [[nodiscard]] virtual std::unique_ptr<PinSurface> make(QWidget& widget, qreal radius,
                                                           std::function<void()> changed) = 0;
};

} // namespace brindlecam
