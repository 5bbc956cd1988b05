#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace brindlecam {

/// One display in the layout of the port that found it. Native rectangles are pixels of the global
/// desktop, origin top-left, y down; points are native pixels divided by the scale. Where the
/// system has no such pixels, the port lays the displays out: each in its own pixels, never one
/// over another, perhaps with gaps between them.
struct ScreenInfo {
    QString id;         ///< the system's name of the output, unique while it is connected
    QRect native;       ///< whole display, native pixels
    qreal scale = 1;    ///< pixels per point: 1, 1.25, 1.5, 2 …; not what a toolkit paints with
    QRect visibleFrame; ///< without docks and panels, native pixels; inside `native`

    /// Size in points, as reals: 1366 pixels at scale 1.5 are 910.67 points.
    [[nodiscard]] QSizeF size() const;

    /// A rectangle of the global desktop (native pixels), clipped to this screen and turned into
    /// this screen's points (origin at its top-left corner). Empty when it lies elsewhere.
    [[nodiscard]] QRectF toPoints(const QRect& nativeRect) const;

    /// A place on the global desktop (native pixels) in this screen's points; not clamped.
    [[nodiscard]] QPointF toPoints(const QPoint& nativePoint) const;

    /// A rectangle in this screen's points as native pixels of the global desktop, rounded outward.
    [[nodiscard]] QRect toNative(const QRectF& points) const;

    /// The same output with the same pixels in the same place; docks may have come or gone.
    [[nodiscard]] bool sameDisplay(const ScreenInfo& other) const;

    bool operator==(const ScreenInfo&) const = default;
};

} // namespace brindlecam
