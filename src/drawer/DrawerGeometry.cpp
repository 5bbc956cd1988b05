#include "drawer/DrawerGeometry.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::DrawerGeometry {

namespace {

constexpr qreal kLeastContent = 640;
constexpr qreal kGap = kTileStep - kTile.width();
constexpr qreal kBesidePanel = 40; // both sides of a screen that is too narrow together
constexpr qreal kAboveBottom = 14; // of what docks leave free
constexpr qreal kDrop = kHeight + 30;

} // namespace

qreal contentWidth(int entries)
{
    return std::max(kLeastContent, entries * kTileStep - kGap);
}

qreal panelWidth(int entries, const ScreenInfo& screen)
{
    const qreal free = screen.visibleFrame.width() / screen.scale;
    return std::min(contentWidth(entries) + 2 * kMargin, free - kBesidePanel);
}

int tilesInSight(int entries, const ScreenInfo& screen)
{
    const qreal row = panelWidth(entries, screen) - 2 * kMargin;
    return std::min(entries, static_cast<int>(std::ceil(row / kTileStep)));
}

Places places(int entries, const ScreenInfo& screen, const std::vector<ScreenInfo>& screens)
{
    const QRect& free = screen.visibleFrame;
    const qreal width = panelWidth(entries, screen);
    const QSize size(qRound(width * screen.scale), qRound(kHeight * screen.scale));
    const int left = free.x() + qRound((free.width() - size.width()) / 2.0);
    const int bottom = free.y() + free.height() - qRound(kAboveBottom * screen.scale);
    Places places;
    places.open = QRect(QPoint(left, bottom - size.height()), size);
    places.below = places.open.translated(0, qRound(kDrop * screen.scale));
    places.slides = std::ranges::none_of(screens, [&](const ScreenInfo& other) {
        return !other.sameDisplay(screen) && other.native.intersects(places.below);
    });
    return places;
}

} // namespace brindlecam::DrawerGeometry
