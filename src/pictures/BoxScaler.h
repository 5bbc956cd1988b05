#pragma once

#include <QImage>
#include <QRgb>
#include <QSize>

#include <cstddef>
#include <vector>

namespace brindlecam {

/// Makes a picture smaller while its rows come by: each pixel of the result is the mean of what it
/// stands for. Only sums of one row of the result are kept, however large the picture is. Any
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
    /// Red, green, blue and alpha, summed.
    struct Sum {
        float channel[4] = {};
    };
    /// The pixels of a row, from `first` on, that one of the result stands for. The outermost ones
    /// may belong to it in part.
    struct Span {
        std::size_t first = 0;
        std::size_t count = 0;
        float firstShare = 1;
        float lastShare = 1;
    };

    [[nodiscard]] static Sum meanOf(const QRgb* row, const Span& span, float scale);
    void addShare(float share);
    void finishRow();

    const QSize m_from;
    const QSize m_to;
    std::vector<Span> m_spans; ///< one for each column of the result
    std::vector<Sum> m_row;    ///< the last row that came, as wide as the result
    std::vector<Sum> m_sums;   ///< of the row of the result that is being made
    int m_rowsAdded = 0;
    int m_rowsDone = 0;
    QImage m_result;
};

} // namespace brindlecam
