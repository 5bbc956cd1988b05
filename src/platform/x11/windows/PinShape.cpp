#include "platform/x11/windows/PinShape.h"

#include <QRect>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace brindlecam::x11 {

void PinShape::open(QSize size)
{
    m_asked = size;
    m_changed = false;
}

QSize PinShape::ask(QSize size, QSize shown)
{
    m_asked = size;
    m_changed = true;
    return size.expandedTo(shown);
}

QSize PinShape::shown(QSizeF widget, qreal ratio) const
{
    const QSize has = (widget * ratio).toSize();
    const QSize off = has - m_asked;
    const bool same = std::abs(off.width()) <= ratio && std::abs(off.height()) <= ratio;
    return same ? m_asked : has;
}

QSize PinShape::cut(QSize shown, const WindowSize& window) const
{
    if (!m_changed || shown == m_asked)
        return shown;
    return shown.expandedTo(window());
}

QRegion PinShape::rounded(QSize pixels, qreal radius)
{
    if (pixels.isEmpty())
        return {};
    const qreal most = std::min({radius, pixels.width() / 2.0, pixels.height() / 2.0});
    const int rows = static_cast<int>(std::ceil(most));
    if (rows < 1)
        return QRect(QPoint(), pixels);
    std::vector<QRect> rects;
    const auto addRow = [&](int y, int inset) {
        rects.emplace_back(inset, y, pixels.width() - 2 * inset, 1);
    };
    const auto insetOf = [most](int row) {
        const qreal rise = std::max(0.0, most - row - 0.5);
        return qRound(most - std::sqrt(most * most - rise * rise));
    };
    for (int row = 0; row < rows; ++row)
        addRow(row, insetOf(row));
    const int between = pixels.height() - 2 * rows;
    if (between > 0)
        rects.emplace_back(0, rows, pixels.width(), between);
    for (int row = rows - 1 + std::min(between, 0); row >= 0; --row)
        addRow(pixels.height() - 1 - row, insetOf(row));
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region;
}

} // namespace brindlecam::x11
