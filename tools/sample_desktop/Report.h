#pragma once

#include <QSize>

class QPainter;

namespace brindlecam::sample {

struct Theme;

/// A document with a side bar, text, a chart and a table. Points.
void paintReport(QPainter& painter, QSize size, const Theme& theme);

} // namespace brindlecam::sample
