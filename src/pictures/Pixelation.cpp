#include "pictures/Pixelation.h"

#include "pictures/Crop.h"
#include "pictures/PixelGrid.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace brindlecam {

namespace {

constexpr int kSmallestSide = 2;       // pixels
constexpr qreal kCellPoints = 9;       // points
constexpr qreal kSmallestCell = 6;     // pixels
constexpr qreal kLimitOfCell = 256;    // pixels: so many rows of bytes still add up in 16 bits
constexpr qreal kTieTolerance = 1e-6;  // pixels
constexpr qsizetype kBytesOfPixel = 4; // a channel each

/// Whether a pixel is four bytes of which each is a channel (or nothing), in whatever order.
bool hasByteChannels(const QImage& picture)
{
    switch (picture.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
    case QImage::Format_RGBX8888:
    case QImage::Format_RGBA8888:
    case QImage::Format_RGBA8888_Premultiplied:
        return true;
    default:
        return false;
    }
}

/// The first pixel that belongs to this cell: a pixel belongs where its centre lies, and a centre
/// on the line between two cells belongs to the farther one.
int firstPixel(int cell, qreal side)
{
    return static_cast<int>(std::ceil(cell * side - 0.5 - kTieTolerance));
}

int cellsAlong(int pixels, qreal side)
{
    return static_cast<int>(std::floor((pixels - 0.5 + kTieTolerance) / side)) + 1;
}

void addRow(const uchar* row, std::uint16_t* sums, qsizetype bytes)
{
    for (qsizetype i = 0; i < bytes; ++i)
        sums[i] = static_cast<std::uint16_t>(sums[i] + row[i]);
}

/// Averages each group of columns in `sums`, which holds so many rows added up.
void averageRow(const std::vector<std::uint16_t>& sums, int width, int rows, qreal side, uchar* out,
                int columns)
{
    for (int column = 0; column < columns; ++column) {
        const int first = firstPixel(column, side);
        const int end = firstPixel(column + 1, side);
        std::array<std::uint32_t, kBytesOfPixel> totals{};
        for (int x = first; x < end; ++x) {
            const std::uint16_t* pixel = sums.data() + std::min(x, width - 1) * kBytesOfPixel;
            for (std::size_t channel = 0; channel < totals.size(); ++channel)
                totals[channel] += pixel[channel];
        }
        const auto count = static_cast<std::uint32_t>((end - first) * rows);
        for (const std::uint32_t total : totals)
            *out++ = static_cast<uchar>((total + count / 2) / count);
    }
}

QImage averagedCells(const QImage& part, qreal side)
{
    const int width = part.width();
    const int height = part.height();
    const int columns = cellsAlong(width, side);
    const int rows = cellsAlong(height, side);
    QImage cells(columns, rows, part.format());
    if (cells.isNull())
        return {};
    std::vector<std::uint16_t> sums(static_cast<std::size_t>(width) * kBytesOfPixel);
    for (int row = 0; row < rows; ++row) {
        std::fill(sums.begin(), sums.end(), std::uint16_t(0));
        const int first = firstPixel(row, side);
        const int end = firstPixel(row + 1, side);
        for (int fromBottom = first; fromBottom < end; ++fromBottom)
            addRow(part.constScanLine(std::max(0, height - 1 - fromBottom)), sums.data(),
                   width * kBytesOfPixel);
        averageRow(sums, width, end - first, side, cells.scanLine(rows - 1 - row), columns);
    }
    return cells;
}

/// The first device pixel at or after this place whose centre is not before it.
int pixelFrom(qreal place)
{
    return static_cast<int>(std::ceil(place - 0.5 - kTieTolerance));
}

/// The same counted towards the top: the device pixel after the last whose centre is not below.
int pixelUpTo(qreal place)
{
    return static_cast<int>(std::floor(place - 0.5 + kTieTolerance)) + 1;
}

} // namespace

Pixelation::Pixelation(QImage cells, QSize size, qreal cell)
    : m_cells(std::move(cells))
    , m_size(size)
    , m_cell(cell)
{
}

std::optional<Pixelation> Pixelation::of(const QImage& frozen, const QRect& pixels,
                                         qreal cellPixels)
{
    if (pixels.width() < kSmallestSide || pixels.height() < kSmallestSide)
        return std::nullopt;
    QImage part = croppedView(frozen, pixels);
    if (!part.isNull() && !hasByteChannels(part))
        part = part.convertToFormat(QImage::Format_RGB32);
    if (part.isNull())
        return std::nullopt;
    const qreal side = std::clamp(cellPixels, 1.0, kLimitOfCell);
    QImage cells = averagedCells(part, side);
    if (cells.isNull())
        return std::nullopt;
    return Pixelation(std::move(cells), part.size(), side);
}

qreal Pixelation::cellPixels(PixelsPerPoint ratio)
{
    return std::max(kSmallestCell, kCellPoints * ratio.x);
}

// One strip for all cells of a row: thousands of small rectangles would take far longer.
void Pixelation::drawRow(const PixelGrid& grid, int row, const std::vector<QRect>& columns, int top,
                         int bottom) const
{
    QRect shown;
    for (const QRect& column : columns)
        shown |= column;
    if (shown.isEmpty())
        return;
    QImage strip(shown.width(), bottom - top + 1,
                 m_cells.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                           : QImage::Format_RGB32);
    auto* const first = reinterpret_cast<QRgb*>(strip.bits());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].isEmpty())
            continue;
        const QRgb colour = qPremultiply(m_cells.pixel(static_cast<int>(i), row));
        std::fill_n(first + columns[i].left() - shown.left(), columns[i].width(), colour);
    }
    for (int y = 1; y < strip.height(); ++y)
        std::copy_n(first, strip.width(), reinterpret_cast<QRgb*>(strip.scanLine(y)));
    grid.draw(strip, {shown.left(), top});
}

// The cells may end half a pixel of the picture before the patch does: its pixels belong where
// their centres lie. The last ones go on to the end of the target, or that would show through.
void Pixelation::draw(QPainter& painter, const QRectF& target) const
{
    const PixelGrid grid(painter);
    const QRectF place = grid.toPixels().mapRect(target);
    if (place.isEmpty())
        return;
    const QRect visible =
        grid.shown({QPoint(pixelFrom(place.left()), pixelUpTo(place.top())),
                    QPoint(pixelFrom(place.right()) - 1, pixelUpTo(place.bottom()) - 1)});
    const qreal cellWidth = m_cell * place.width() / m_size.width();
    const qreal cellHeight = m_cell * place.height() / m_size.height();
    std::vector<QRect> columns;
    for (int column = 0; column < m_cells.width(); ++column) {
        const int left = std::max(visible.left(), pixelFrom(place.left() + column * cellWidth));
        const int next = column + 1 == m_cells.width()
                             ? visible.right() + 1
                             : pixelFrom(place.left() + (column + 1) * cellWidth);
        columns.emplace_back(QPoint(left, 0), QPoint(std::min(visible.right(), next - 1), 0));
    }
    for (int row = 0; row < m_cells.height(); ++row) {
        const int fromBottom = m_cells.height() - 1 - row;
        const int end =
            row == 0 ? visible.top() : pixelUpTo(place.bottom() - (fromBottom + 1) * cellHeight);
        const int top = std::max(visible.top(), end);
        const int bottom =
            std::min(visible.bottom(), pixelUpTo(place.bottom() - fromBottom * cellHeight) - 1);
        if (top <= bottom)
            drawRow(grid, row, columns, top, bottom);
    }
}

} // namespace brindlecam
