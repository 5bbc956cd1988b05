#include "drawer/TileRow.h"

#include "drawer/CaptureTile.h"
#include "drawer/DrawerGeometry.h"
#include "look/WheelDelta.h"

#include <QCursor>
#include <QWheelEvent>

#include <algorithm>

namespace brindlecam {

namespace {

constexpr qreal kPointsPerNotch = DrawerGeometry::kTileStep / 2;

} // namespace

TileRow::TileRow(QWidget* parent)
    : QWidget(parent)
    , m_content(new QWidget(this))
{
}

void TileRow::append(CaptureTile* tile)
{
    tile->setParent(m_content);
    tile->installEventFilter(this);
    tile->move(qRound(static_cast<qreal>(m_tiles.size()) * DrawerGeometry::kTileStep), 0);
    m_tiles.push_back(tile);
    const qreal width = DrawerGeometry::contentWidth(static_cast<int>(m_tiles.size()));
    m_content->resize(qRound(width), qRound(DrawerGeometry::kTile.height()));
}

CaptureTile* TileRow::focusedTile() const
{
    const int index = focusedIndex();
    return index < 0 ? nullptr : m_tiles[static_cast<std::size_t>(index)];
}

int TileRow::focusedIndex() const
{
    const auto found = std::ranges::find(m_tiles, window()->focusWidget());
    return found == m_tiles.end() ? -1 : static_cast<int>(found - m_tiles.begin());
}

CaptureTile* TileRow::hoveredTile() const
{
    const auto found = std::ranges::find_if(m_tiles, &CaptureTile::hovering);
    return found == m_tiles.end() ? nullptr : *found;
}

void TileRow::focusTile(int index)
{
    if (m_tiles.empty())
        return;
    const int last = static_cast<int>(m_tiles.size()) - 1;
    CaptureTile* const tile = m_tiles[static_cast<std::size_t>(std::clamp(index, 0, last))];
    tile->setFocus(Qt::TabFocusReason);
    const qreal left = tile->x();
    if (left < m_scrolled)
        scrollTo(left);
    else if (left + tile->width() > m_scrolled + width())
        scrollTo(left + tile->width() - width());
}

void TileRow::scrollTo(qreal points)
{
    const qreal end = std::max(0, m_content->width() - width());
    m_scrolled = std::clamp(points, 0.0, end);
    m_content->move(-qRound(m_scrolled), 0);
    hoverUnderPointer();
}

void TileRow::resizeEvent(QResizeEvent*)
{
    scrollTo(m_scrolled);
}

// Nobody tells widgets that have moved under a pointer that rests.
void TileRow::hoverUnderPointer()
{
    const QPoint pointer = mapFromGlobal(QCursor::pos());
    for (CaptureTile* tile : m_tiles) {
        const QPoint inTile = tile->mapFrom(this, pointer);
        tile->setHovering(underMouse() && rect().contains(pointer) &&
                          tile->rect().contains(inTile));
    }
}

// A tile that has moved under the pointer was never entered, so that nobody tells it to leave.
void TileRow::hoverNoneBut(const CaptureTile* tile)
{
    for (CaptureTile* other : m_tiles) {
        if (other != tile)
            other->setHovering(false);
    }
}

bool TileRow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter)
        hoverNoneBut(qobject_cast<const CaptureTile*>(watched));
    return QWidget::eventFilter(watched, event);
}

void TileRow::leaveEvent(QEvent*)
{
    hoverNoneBut(nullptr);
}

// A wheel has one direction, and so has this row.
void TileRow::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const WheelDelta sideways = WheelDelta::sideways(*event);
    const qreal points = sideways.unit == WheelDelta::Unit::points
                             ? sideways.amount
                             : sideways.amount * kPointsPerNotch;
    if (points != 0)
        scrollTo(m_scrolled - points);
}

} // namespace brindlecam
