#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include <optional>
#include <vector>

namespace brindlecam {

/// Where the tool tip of a bar's control stands: 6 points beside the bar, centred on the control as
/// far as the canvas and other bars let it, and never on any of those. Whole points of the canvas,
/// origin top-left.
namespace TipPlacement {

/// What a tip stands among.
struct Surroundings {
    QRect control;            ///< what it is about
    QRect bar;                ///< the bar or popup with that control: a column or a row
    std::vector<QRect> shown; ///< all bars and popups, that one too
    QRectF selection;
    QSizeF canvas;
};

/// On the side of the bar that is away from the selection, else on the other: columns have it on
/// their left or right, rows above or below. Where other bars leave no room there, as near to the
/// control as they let it. None where a tip of this size has no room at all.
[[nodiscard]] std::optional<QRect> place(QSize tip, const Surroundings& around);

} // namespace TipPlacement

} // namespace brindlecam
