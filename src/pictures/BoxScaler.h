#pragma once

#include <QImage>
#include <QRgb>
#include <QSize>

#include <cstddef>
#include <vector>

namespace brindlecam {

/// Makes a picture smaller while its rows come by: each pixel of the result is the mean of what it
/// stands for. Only sums for one row of the result are kept, however large the picture is. Any
/// thread, one at a time.
class BoxScaler final {
public:
    /// `to` is at most as large as `from` on each axis, and neither is empty.
    BoxScaler(QSize from, QSize to);

    /// The next row, from the top: `from.width()` premultiplied pixels.
    void add(const QRgb* row);

    /// Premultiplied; rows that never came are transparent. Null when memory ran out.
    [[nodiscard]] const QImage& result() const { return m_result; }

private:
    /// The columns, from `first` on, that one of the result stands for. The outermost ones may
    /// belong to it in part.
    struct Span {
        std::size_t first = 0;
        std::size_t count = 0;
        float firstShare = 1;
        float lastShare = 1;
    };

    void addShare(const QRgb* row, float share);
    void finishRow();
    [[nodiscard]] QRgb meanOf(const Span& span) const;

    const QSize m_from;
    const QSize m_to;
    std::vector<Span> m_spans; ///< one for each column of the result
    /// What the row of the result that is being made stands for, summed downwards: four channels
    /// for each column of the picture. Most of the work is done where it is all alike.
    std::vector<float> m_sums;
    float m_scale = 1; ///< the share of one pixel in one of the result
    int m_rowsAdded = 0;
    int m_rowsDone = 0;
    QImage m_result;
};

} // namespace brindlecam
