#pragma once

#include <QPalette>
#include <QString>

namespace brindlecam {

/// How our dialogs and menus look on every desktop. Main thread.
namespace Appearance {

enum class Shade { light, dark };

/// Gives the application its style, its colours (light or dark, as the desktop's own are now), its
/// font (the family, when it is installed) and its icon. Once, before the first window.
void install(const QString& fontFamily);

/// The colours of one shade. Text on each ground is at least 4.5 : 1 apart from it, disabled text
/// excepted.
[[nodiscard]] QPalette palette(Shade shade);

/// What is wrong, in words, on the window's ground of such a palette.
[[nodiscard]] QColor warningText(const QPalette& palette);

} // namespace Appearance

} // namespace brindlecam
