#pragma once

#include <QWidget>

#include <vector>

namespace brindlecam {

class CaptureTile;

/// The tiles side by side, as many of them in sight as there is room for; the rest comes by wheel,
/// touchpad and keys. Main thread.
class TileRow final : public QWidget {
    Q_OBJECT

public:
    explicit TileRow(QWidget* parent);

    /// Becomes the owner; the next place to the right.
    void append(CaptureTile* tile);
    /// From the left, which is from the newest.
    [[nodiscard]] const std::vector<CaptureTile*>& captureTiles() const { return m_tiles; }

    [[nodiscard]] CaptureTile* focusedTile() const;
    [[nodiscard]] CaptureTile* hoveredTile() const;
    /// Where the focused tile is; -1 when none is.
    [[nodiscard]] int focusedIndex() const;
    /// Gives the keys to the tile at `index`, or the nearest there is, and brings it into sight.
    void focusTile(int index);

    /// How far the row is scrolled, in points; it goes no further than to the last tile.
    [[nodiscard]] qreal scrolled() const { return m_scrolled; }
    void scrollTo(qreal points);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void hoverUnderPointer();
    void hoverNoneBut(const CaptureTile* tile);

    QWidget* m_content; ///< a child, which has the tiles
    std::vector<CaptureTile*> m_tiles;
    qreal m_scrolled = 0;
};

} // namespace brindlecam
