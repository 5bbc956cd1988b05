#pragma once

#include <QSize>

class QPainter;

namespace brindlecam::sample {

// What the windows of the sample desktop show. Sizes in points, origin top-left.

void paintWallpaper(QPainter& painter, QSize size);
/// An interface page: a heading, lines of text, a bar chart.
void paintReport(QPainter& painter, QSize size);
/// A photo-like page: a sky, a sun and hills in many shades.
void paintLandscape(QPainter& painter, QSize size);

} // namespace brindlecam::sample
