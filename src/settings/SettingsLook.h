#pragma once

#include <QColor>
#include <QString>
#include <Qt>

class QCheckBox;
class QLabel;
class QPalette;
class QVBoxLayout;
class QWidget;

namespace brindlecam {

class WrappedText;

/// The parts that all settings are made of. Whoever puts one into a layout hands it to a parent,
/// which owns it. Main thread; points.
namespace SettingsLook {

inline constexpr int kColumnWidth = 412;
inline constexpr int kSpacing = 10; ///< between the parts of a column

/// An empty column for the widget, from its upper edge down.
[[nodiscard]] QVBoxLayout* column(QWidget* of);

[[nodiscard]] QLabel* header(const QString& title);
/// Small and paler, as wide as a column.
[[nodiscard]] WrappedText* help(const QString& words);
/// A line of the same kind.
[[nodiscard]] QLabel* note();
[[nodiscard]] QCheckBox* box(const QString& title, const QString& toolTip);
[[nodiscard]] QWidget* separator(Qt::Orientation orientation);
/// Of separators, and of the borders of fields.
[[nodiscard]] QColor separatorColor(const QPalette& palette);

} // namespace SettingsLook

} // namespace brindlecam
