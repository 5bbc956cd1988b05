#include "long/ChromePlacement.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::ChromePlacement {

namespace {

// Points.
constexpr qreal kFrameReach = 4; // from the captured rectangle
constexpr qreal kBesidePanel = 8;
constexpr qreal kAboveAndBelowPanel = 4; // to the end of what docks leave free
constexpr qreal kPanelGap = 10;          // to the captured rectangle
constexpr qreal kPanelInside = 12;       // from its lower edge, where it has to lie over it

/// One past the last pixel.
int rightOf(const QRect& rect)
{
    return rect.x() + rect.width();
}

int bottomOf(const QRect& rect)
{
    return rect.y() + rect.height();
}

QSize panelSize(const ScreenInfo& screen)
{
    const qreal room = screen.visibleFrame.width() / screen.scale - 2 * kBesidePanel;
    const qreal width = std::min(kPanel.width(), std::floor(room));
    return {qRound(width * screen.scale), qRound(kPanel.height() * screen.scale)};
}

/// In the middle of the rectangle, as far as the screen lets it.
int panelLeft(const QRect& captured, const ScreenInfo& screen, int width)
{
    const QRect& free = screen.visibleFrame;
    const int margin = qRound(kBesidePanel * screen.scale);
    const int centred = qRound(captured.x() + (captured.width() - width) / 2.0);
    return std::min(std::max(centred, free.x() + margin), rightOf(free) - width - margin);
}

int panelTop(const QRect& captured, const ScreenInfo& screen, int height)
{
    const QRect& free = screen.visibleFrame;
    const int margin = qRound(kAboveAndBelowPanel * screen.scale);
    const int gap = qRound(kPanelGap * screen.scale);
    int top = bottomOf(captured) + gap;
    if (top + height > bottomOf(free) - margin)
        top = captured.y() - gap - height;
    if (top < free.y() + margin)
        top = bottomOf(captured) - qRound(kPanelInside * screen.scale) - height;
    // A flat rectangle under a dock would leave it nowhere.
    return std::clamp(top, screen.native.y(), bottomOf(screen.native) - height);
}

} // namespace

Places places(const QRect& captured, const ScreenInfo& screen)
{
    const int reach = static_cast<int>(std::ceil(kFrameReach * screen.scale));
    const QSize size = panelSize(screen);
    Places places;
    places.frame = captured.adjusted(-reach, -reach, reach, reach);
    places.panel = QRect(QPoint(panelLeft(captured, screen, size.width()),
                                panelTop(captured, screen, size.height())),
                         size);
    places.panelInside = places.panel.intersects(captured);
    return places;
}

} // namespace brindlecam::ChromePlacement
