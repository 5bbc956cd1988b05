#pragma once

#include <QSize>

class QPainter;

namespace brindlecam::sample {

// Photo-like pages in many shades. Sizes in points, origin top-left.

/// Mountains over a lake at dawn.
void paintDawn(QPainter& painter, QSize size);
/// The same place under stars.
void paintNight(QPainter& painter, QSize size);
/// A beach.
void paintBeach(QPainter& painter, QSize size);

} // namespace brindlecam::sample
