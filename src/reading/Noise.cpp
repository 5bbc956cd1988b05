#include "reading/Noise.h"

#include "reading/Icons.h"
#include "reading/InkSpots.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::Noise {

namespace {

constexpr double kTile = 128; ///< pixels along a side, about
// Text is mostly paper, however bold and close; large letters have more ink, but few strokes.
constexpr double kMuchInk = 0.45;
constexpr double kManyRuns = 0.1; ///< per pixel
// Dots of leaders and rules are farther apart.
constexpr int kDot = 3;                ///< pixels along the longer side, at most
constexpr double kMostDots = 0.018;    ///< per pixel
constexpr double kShareOfSpots = 0.75; ///< of a tile's spots, when it is all dots
// Bold words or dotted lines that fill a small picture look the same. The engine is through with
// less than this in time.
constexpr int kVast = 48; ///< tiles

struct Tile {
    int ink = 0;
    int runs = 0; ///< of ink, along the rows
    int spots = 0;
    int dots = 0;

    [[nodiscard]] bool isNoise(double pixels) const
    {
        const bool grain = ink > kMuchInk * pixels && runs > kManyRuns * pixels;
        return grain || (dots > kMostDots * pixels && dots >= kShareOfSpots * spots);
    }
};

/// The picture cut into tiles of about the same size, none of them narrow.
class Tiles final {
public:
    explicit Tiles(QSize size)
        : m_size(size)
        , m_columns(std::max(1, static_cast<int>(std::lround(size.width() / kTile))))
        , m_rows(std::max(1, static_cast<int>(std::lround(size.height() / kTile))))
        , m_tiles(static_cast<std::size_t>(m_columns) * m_rows)
    {
    }

    void countPixels(const QImage& grey, StopRequest stop)
    {
        for (int y = 0; y < m_size.height(); ++y) {
            stop.check();
            const uchar* const line = grey.constScanLine(y);
            Tile* const row = m_tiles.data() + static_cast<std::size_t>(rowAt(y)) * m_columns;
            for (int column = 0; column < m_columns; ++column) {
                bool before = false;
                for (int x = left(column); x < left(column + 1); ++x) {
                    const bool ink = line[x] <= InkSpots::kInk;
                    row[column].ink += ink ? 1 : 0;
                    row[column].runs += ink && !before ? 1 : 0;
                    before = ink;
                }
            }
        }
    }

    void countSpots(const std::vector<QRect>& spots)
    {
        for (const QRect& spot : spots) {
            const auto column =
                static_cast<int>(static_cast<qint64>(spot.left()) * m_columns / m_size.width());
            Tile& tile = m_tiles[static_cast<std::size_t>(rowAt(spot.top())) * m_columns + column];
            ++tile.spots;
            tile.dots += std::max(spot.width(), spot.height()) <= kDot ? 1 : 0;
        }
    }

    /// The tiles amid noise: a margin stays, as text may reach into a tile that is mostly noise.
    /// None when there is little noise.
    [[nodiscard]] std::vector<QRect> noise() const
    {
        const std::vector<QPoint> busy = tilesWhere([this](QPoint tile) { return isNoise(tile); });
        if (busy.size() < kVast)
            return {};
        std::vector<QRect> found;
        for (const QPoint tile : tilesWhere([this](QPoint tile) { return isAmidNoise(tile); }))
            found.push_back(place(tile));
        return found;
    }

private:
    // A tile is named by its column and row.
    template <typename Test>
    [[nodiscard]] std::vector<QPoint> tilesWhere(const Test& test) const
    {
        std::vector<QPoint> found;
        for (int row = 0; row < m_rows; ++row) {
            for (int column = 0; column < m_columns; ++column) {
                if (test(QPoint(column, row)))
                    found.emplace_back(column, row);
            }
        }
        return found;
    }
    [[nodiscard]] bool isNoise(QPoint tile) const
    {
        const QSize size = place(tile).size();
        return m_tiles[static_cast<std::size_t>(tile.y()) * m_columns + tile.x()].isNoise(
            static_cast<double>(size.width()) * size.height());
    }
    /// Whether tile and neighbours are noise; beyond the edges there is nothing to spare.
    [[nodiscard]] bool isAmidNoise(QPoint tile) const
    {
        for (int row = std::max(0, tile.y() - 1); row <= std::min(m_rows - 1, tile.y() + 1);
             ++row) {
            for (int column = std::max(0, tile.x() - 1);
                 column <= std::min(m_columns - 1, tile.x() + 1); ++column) {
                if (!isNoise({column, row}))
                    return false;
            }
        }
        return true;
    }
    [[nodiscard]] QRect place(QPoint tile) const
    {
        return {QPoint(left(tile.x()), top(tile.y())),
                QPoint(left(tile.x() + 1) - 1, top(tile.y() + 1) - 1)};
    }
    // The first pixel of a tile is the first one that rowAt() puts there.
    [[nodiscard]] int rowAt(int y) const
    {
        return static_cast<int>(static_cast<qint64>(y) * m_rows / m_size.height());
    }
    [[nodiscard]] int left(int column) const { return edge(column, m_columns, m_size.width()); }
    [[nodiscard]] int top(int row) const { return edge(row, m_rows, m_size.height()); }
    static int edge(int index, int count, int length)
    {
        return static_cast<int>((static_cast<qint64>(index) * length + count - 1) / count);
    }

    QSize m_size;
    int m_columns;
    int m_rows;
    std::vector<Tile> m_tiles;
};

} // namespace

bool erase(QImage& grey, const std::vector<QRect>& spots, StopRequest stop)
{
    if (grey.isNull())
        return false;
    Tiles tiles(grey.size());
    tiles.countPixels(grey, stop);
    tiles.countSpots(spots);
    const std::vector<QRect> places = tiles.noise();
    Icons::erase(grey, places);
    return !places.empty();
}

} // namespace brindlecam::Noise
