#pragma once

#include <QSize>

class QPainter;

namespace brindlecam::sample {

inline constexpr int kTopBarHeight = 30; // points

/// The panel along the upper edge: a menu, the time, a few signs. Points.
void paintTopBar(QPainter& painter, QSize size);

} // namespace brindlecam::sample
