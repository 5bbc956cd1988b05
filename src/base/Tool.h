#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace brindlecam {

/// The annotation tools, in the order of their buttons.
enum class Tool : std::uint8_t { pen, line, arrow, rect, marker, text, number, pixelate };

inline constexpr std::array kAllTools{Tool::pen,    Tool::line, Tool::arrow,  Tool::rect,
                                      Tool::marker, Tool::text, Tool::number, Tool::pixelate};

/// Sizes of a tool in points: stroke width, or the diameter of a step badge.
struct ToolSizes {
    qreal minimum = 1;
    qreal maximum = 20;
    qreal step = 1;
    qreal standard = 3; ///< used until the user chooses another

    bool operator==(const ToolSizes&) const = default;
};

/// Alphas of the marker.
inline constexpr ToolSizes kMarkerOpacities{
    .minimum = 0.1, .maximum = 1, .step = 0.05, .standard = 0.4};

/// The size read for tools that have none.
inline constexpr qreal kFixedToolSize = 3;

/// The case's name as it stands in settings keys: "pen", "line" …
[[nodiscard]] QString name(Tool tool);
/// File name of the toolbar symbol, without its ending.
[[nodiscard]] QString symbolName(Tool tool);
[[nodiscard]] QString tooltip(Tool tool);
/// Label of the size control; absent for tools without sizes (text, pixelate).
[[nodiscard]] std::optional<QString> sizeLabel(Tool tool);
/// Absent for tools without sizes (text, pixelate).
[[nodiscard]] std::optional<ToolSizes> sizes(Tool tool);

} // namespace brindlecam
