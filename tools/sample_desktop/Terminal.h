#pragma once

#include <QSize>

class QPainter;

namespace brindlecam::sample {

/// A terminal after a build: coloured text in columns on dark ground. Points.
void paintTerminal(QPainter& painter, QSize size);

} // namespace brindlecam::sample
