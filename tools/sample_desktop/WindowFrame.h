#pragma once

#include <QRect>
#include <QString>

class QPainter;

namespace brindlecam::sample {

struct Theme;

// What surrounds a window's content, painted by the window itself. Points.

/// Paints ground, title bar and outline.
void paintFrame(QPainter& painter, QSize size, const QString& title, const Theme& theme);
/// Where the content goes.
[[nodiscard]] QRect contentOf(QSize size);
/// Paints the soft shadow that a window in this place casts on what lies beneath.
void paintShadow(QPainter& painter, const QRect& window);

} // namespace brindlecam::sample
