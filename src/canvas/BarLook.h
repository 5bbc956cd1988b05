#pragma once

#include <QRectF>

class QPainter;

namespace brindlecam {

/// What bars, popups and their controls have in common in looks. Points of the widget; every edge
/// lies on whole device pixels.
namespace BarLook {

/// The dark rounded ground of a bar or popup, with its thin border inside.
void paintGround(QPainter& painter, const QRectF& rect);

/// The ring that tells which control has the keyboard focus, inside of the rectangle.
void paintFocusRing(QPainter& painter, const QRectF& rect);

/// Corner radius of a control, in points.
inline constexpr qreal kControlRadius = 6;

} // namespace BarLook

} // namespace brindlecam
