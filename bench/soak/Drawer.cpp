#include "Drawer.h"

#include <algorithm>

namespace brindlecam::soak {

namespace {

constexpr int kHeight = 212;
constexpr int kAboveBottom = 14;
constexpr int kMargin = 16;
constexpr int kBeside = 40; // both sides of the monitor
constexpr int kRowTop = 46;
constexpr QSize kTile(210, 150);
constexpr int kStep = 222;
constexpr int kLeastContent = 640;
constexpr QRect kPicture(8, 8, 194, 114); // in a tile

int contentWidth(int tiles)
{
    return std::max(kLeastContent, tiles * kStep - (kStep - kTile.width()));
}

} // namespace

QRect Drawer::place() const
{
    const int width = std::min(contentWidth(count()) + 2 * kMargin, monitor.width() - kBeside);
    return {monitor.x() + (monitor.width() - width + 1) / 2,
            monitor.y() + monitor.height() - kAboveBottom - kHeight, width, kHeight};
}

QRect Drawer::row() const
{
    const QRect whole = place();
    return {whole.x() + kMargin, whole.y() + kRowTop, whole.width() - 2 * kMargin, kTile.height()};
}

QRect Drawer::tile(int index) const
{
    return {row().topLeft() + QPoint(index * kStep - scrolled, 0), kTile};
}

QRect Drawer::thumbnail(int index) const
{
    const QSize size = tiles.at(static_cast<std::size_t>(index)).picture.pixels.size();
    const QSize seen = size.scaled(kPicture.size(), Qt::KeepAspectRatio);
    const QSize beside = (kPicture.size() - seen) / 2.0;
    return {tile(index).topLeft() + kPicture.topLeft() + QPoint(beside.width(), beside.height()),
            seen};
}

std::vector<int> Drawer::inSight() const
{
    std::vector<int> seen;
    for (int index = 0; index < count(); ++index) {
        if (row().contains(tile(index)))
            seen.push_back(index);
    }
    return seen;
}

void Drawer::focus(int index)
{
    focused = std::clamp(index, 0, count() - 1);
    const int left = focused * kStep;
    if (left < scrolled)
        scrollTo(left);
    else if (left + kTile.width() > scrolled + row().width())
        scrollTo(left + kTile.width() - row().width());
}

void Drawer::scrollTo(int place)
{
    const int end = std::max(0, contentWidth(count()) - row().width());
    scrolled = std::clamp(place, 0, end);
}

void Drawer::remove(int index)
{
    tiles.erase(tiles.begin() + index);
    focused = std::min(focused, count() - 1);
    scrollTo(scrolled);
}

} // namespace brindlecam::soak
