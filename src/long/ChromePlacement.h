#pragma once

#include "base/ScreenInfo.h"

#include <QRect>
#include <QSizeF>

namespace brindlecam {

/// Where the frame and the panel of a long capture stand. Pure; rectangles are native pixels of the
/// global desktop.
namespace ChromePlacement {

/// The panel, in points. Where a screen leaves less room it is narrower.
inline constexpr QSizeF kPanel{640, 44};

struct Places {
    QRect frame; ///< the captured rectangle and what is drawn around it
    QRect panel;
    bool panelInside = false; ///< the panel lies over a part of the captured rectangle
};

/// The panel stands below the captured rectangle; above it where the screen ends; over its lower
/// edge where it leaves no room above, either. `screen` is the one with the rectangle.
[[nodiscard]] Places places(const QRect& captured, const ScreenInfo& screen);

} // namespace ChromePlacement

} // namespace brindlecam
