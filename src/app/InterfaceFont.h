#pragma once

#include <QFont>

namespace brindlecam {

/// The fonts of our own surfaces, sized in points of the screen (one point is one
/// device-independent pixel; fractions are kept).
namespace InterfaceFont {

/// Makes `family` the application's font when it is installed; an empty or missing family leaves
/// the system's own.
void install(const QString& family);

[[nodiscard]] QFont regular(qreal points);
[[nodiscard]] QFont medium(qreal points);
[[nodiscard]] QFont semibold(qreal points);
[[nodiscard]] QFont bold(qreal points);
/// The same font with digits of one width, so that counting texts do not jump.
[[nodiscard]] QFont monospacedDigits(QFont font);

} // namespace InterfaceFont

} // namespace brindlecam
