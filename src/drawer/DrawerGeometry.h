#pragma once

#include "base/ScreenInfo.h"

#include <QRect>
#include <QRectF>
#include <QSizeF>

#include <vector>

namespace brindlecam {

/// Where the drawer and its tiles stand. Pure; points, origin in the drawer's top-left corner,
/// unless a name says pixels.
namespace DrawerGeometry {

inline constexpr qreal kHeight = 212;
inline constexpr qreal kMargin = 16; ///< left, right and below of what is in it
inline constexpr qreal kRowTop = 46;
inline constexpr QSizeF kTile{210, 150};
inline constexpr qreal kTileStep = 222; ///< from one tile to the next
/// What a picture gets of its tile.
inline constexpr QRectF kPicture{8, 8, kTile.width() - 16, kTile.height() - 36};

/// As wide as so many tiles side by side, or as the header needs.
[[nodiscard]] qreal contentWidth(int entries);
/// The drawer's.
[[nodiscard]] qreal panelWidth(int entries, const ScreenInfo& screen);
/// How many tiles can be seen at once, cut ones included.
[[nodiscard]] int tilesInSight(int entries, const ScreenInfo& screen);

/// Where it stands on the desktop. Native pixels.
struct Places {
    QRect open;
    QRect below;        ///< out of sight, where it comes from and goes to
    bool slides = true; ///< false: another screen lies there, on which it would be seen
};
[[nodiscard]] Places places(int entries, const ScreenInfo& screen,
                            const std::vector<ScreenInfo>& screens);

} // namespace DrawerGeometry

} // namespace brindlecam
