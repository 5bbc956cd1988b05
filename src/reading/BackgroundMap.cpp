#include "reading/BackgroundMap.h"

#include <algorithm>

namespace brindlecam {

namespace {

/// Pixels along a cell's side: finer than any letter, and a sixteenth of the memory.
constexpr int kCell = 4;

} // namespace

BackgroundMap::BackgroundMap(const std::vector<int>& nearest, QSize size)
    : m_cells((size.width() + kCell - 1) / kCell, (size.height() + kCell - 1) / kCell)
{
    m_background.reserve(static_cast<std::size_t>(m_cells.width()) * m_cells.height());
    for (int row = 0; row < m_cells.height(); ++row) {
        const int y = std::min(row * kCell + kCell / 2, size.height() - 1);
        for (int column = 0; column < m_cells.width(); ++column) {
            const int x = std::min(column * kCell + kCell / 2, size.width() - 1);
            m_background.push_back(nearest[static_cast<std::size_t>(y) * size.width() + x]);
        }
    }
}

int BackgroundMap::at(QPoint pixel) const
{
    if (m_background.empty())
        return 0;
    const int column = std::clamp(pixel.x() / kCell, 0, m_cells.width() - 1);
    const int row = std::clamp(pixel.y() / kCell, 0, m_cells.height() - 1);
    return m_background[static_cast<std::size_t>(row) * m_cells.width() + column];
}

} // namespace brindlecam
