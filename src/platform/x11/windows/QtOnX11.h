#pragma once

#include <QPointF>
#include <QRect>

#include <xcb/xcb.h>

class QScreen;
class QWidget;

namespace brindlecam::x11 {

/// What Qt's widgets, screens and points are on the server. Qt keeps a screen's origin in pixels
/// and divides the rest by its scale. Main thread; pixels are native ones of the global desktop.

/// XCB_WINDOW_NONE for a widget that has no window yet.
[[nodiscard]] xcb_window_t idOf(const QWidget& widget);
/// All of the screen, in pixels.
[[nodiscard]] QRect pixelsOf(const QScreen& screen);
/// The pixel at a place that Qt tells in points.
[[nodiscard]] QPoint pixelAt(QPointF place, const QScreen& screen);
/// The nearest rectangle in whole points, which is all that a widget can be told.
[[nodiscard]] QRect roundedPoints(const QRect& native, const QScreen& screen);

} // namespace brindlecam::x11
