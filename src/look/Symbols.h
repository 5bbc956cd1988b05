#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

class QPainter;

namespace brindlecam {

/// Our own symbols, drawn on a grid of 24 × 24 and named like the system symbols they stand for:
/// "leaf.fill". One colour each, chosen where they are shown; crisp at every size and scale. Main
/// thread.
namespace Symbols {

[[nodiscard]] bool exists(const QString& name);

/// An icon that draws itself anew for every size; disabled ones are paler. Null when there is no
/// such symbol. Whoever shows it says in words what it stands for: an icon has no text of its own.
[[nodiscard]] QIcon icon(const QString& name, const QColor& color);

/// Draws the symbol as large as fits into `rect`, centred; the painter's own units.
void draw(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color);

} // namespace Symbols

} // namespace brindlecam
