#pragma once

#include <QPoint>
#include <QSize>

#include <vector>

namespace brindlecam {

/// Which background lies where in a picture, remembered coarsely. Pixels of the picture, origin
/// top-left. Any thread.
class BackgroundMap final {
public:
    BackgroundMap() = default;

    /// `nearest` names the nearest background of each pixel, row by row.
    BackgroundMap(const std::vector<int>& nearest, QSize size);

    /// The background at a place; outside of the picture the nearest one inside. 0 without picture.
    [[nodiscard]] int at(QPoint pixel) const;

private:
    QSize m_cells;
    std::vector<int> m_background;
};

} // namespace brindlecam
