#pragma once

#include <QFont>
#include <QPointF>
#include <QSizeF>
#include <QString>

class QPainter;

namespace brindlecam {

/// The one line of a text mark, laid out alike for measuring and drawing. Letters the font lacks
/// come from others (emoji), right-to-left text starts at the left edge like any other. Points. On
/// any thread.
namespace AnnotationText {

/// The font of every text mark. Each thread has its own: Qt keeps what a font has loaded inside it,
/// per thread and without a lock.
[[nodiscard]] const QFont& font();

/// What the text takes: its advance, and ascent plus descent of the tallest font in it.
[[nodiscard]] QSizeF measured(const QString& text);

/// Draws with the painter's pen, from this upper left corner.
void draw(QPainter& painter, QPointF topLeft, const QString& text);

} // namespace AnnotationText

} // namespace brindlecam
