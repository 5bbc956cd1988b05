#pragma once

#include <QFont>
#include <QString>

namespace brindlecam {

/// The text with line feeds, in as few lines as fit into `width` points, each about as long as the
/// others. Lines break at spaces, and none begins with a middle dot; a word that is too long has a
/// line of its own. Main thread.
[[nodiscard]] QString wrapped(const QString& text, const QFont& font, qreal width);

} // namespace brindlecam
