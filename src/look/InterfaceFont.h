#pragma once

#include <QFont>

namespace brindlecam {

/// The fonts of our own surfaces, sized in points of the screen (one point is one
/// device-independent pixel). Qt's own text rounds a fractional size to whole pixels; TextLine
/// draws it as it is. Whole sizes on any thread, as marks are drawn in the pool; fractional ones,
/// for which the screen's density is asked, and install() on the main thread.
namespace InterfaceFont {

/// Makes `family` the application's font when it is installed; an empty or missing family leaves
/// the system's own.
void install(const QString& family);

[[nodiscard]] QFont regular(qreal points);
[[nodiscard]] QFont medium(qreal points);
[[nodiscard]] QFont semibold(qreal points);
[[nodiscard]] QFont bold(qreal points);

/// The size asked for, fractions included.
[[nodiscard]] qreal points(const QFont& font);

} // namespace InterfaceFont

} // namespace brindlecam
