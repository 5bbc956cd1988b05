#include "pictures/BoxScaler.h"

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

void unpack(QRgb pixel, float share, float* sum)
{
    sum[0] += share * static_cast<float>(qRed(pixel));
    sum[1] += share * static_cast<float>(qGreen(pixel));
    sum[2] += share * static_cast<float>(qBlue(pixel));
    sum[3] += share * static_cast<float>(qAlpha(pixel));
}

int rounded(float channel)
{
    return std::clamp(static_cast<int>(channel + 0.5F), 0, 255);
}

} // namespace

BoxScaler::BoxScaler(QSize from, QSize to)
    : m_from(from)
    , m_to(to)
    , m_row(static_cast<std::size_t>(to.width()))
    , m_sums(static_cast<std::size_t>(to.width()))
    , m_result(to, QImage::Format_ARGB32_Premultiplied)
{
    m_result.fill(Qt::transparent);
    m_spans.reserve(static_cast<std::size_t>(to.width()));
    for (int column = 0; column < to.width(); ++column) {
        const double begin = double(column) * from.width() / to.width();
        const double end = double(column + 1) * from.width() / to.width();
        const double last = std::max(std::floor(begin), std::ceil(end) - 1);
        Span span;
        span.first = static_cast<std::size_t>(begin);
        span.count = static_cast<std::size_t>(last - std::floor(begin)) + 1;
        span.firstShare = static_cast<float>(std::min(std::floor(begin) + 1, end) - begin);
        span.lastShare = static_cast<float>(end - last);
        m_spans.push_back(span);
    }
}

BoxScaler::Sum BoxScaler::meanOf(const QRgb* row, const Span& span, float scale)
{
    Sum sum;
    const QRgb* const pixels = row + span.first;
    unpack(pixels[0], span.firstShare, sum.channel);
    for (std::size_t i = 1; i + 1 < span.count; ++i)
        unpack(pixels[i], 1, sum.channel);
    if (span.count > 1)
        unpack(pixels[span.count - 1], span.lastShare, sum.channel);
    for (float& channel : sum.channel)
        channel *= scale;
    return sum;
}

void BoxScaler::add(const QRgb* row)
{
    if (m_result.isNull() || m_rowsAdded == m_from.height())
        return;
    const float scale = static_cast<float>(m_to.width()) / static_cast<float>(m_from.width());
    for (std::size_t column = 0; column < m_spans.size(); ++column)
        m_row[column] = meanOf(row, m_spans[column], scale);

    // In rows of the result: where this one begins and ends.
    const double begin = double(m_rowsAdded) * m_to.height() / m_from.height();
    const double end = double(m_rowsAdded + 1) * m_to.height() / m_from.height();
    ++m_rowsAdded;
    const double border = m_rowsDone + 1;
    addShare(static_cast<float>(std::min(end, border) - begin));
    if (end < border && m_rowsAdded < m_from.height())
        return;
    finishRow();
    if (end > border && m_rowsDone < m_to.height())
        addShare(static_cast<float>(end - border));
}

void BoxScaler::addShare(float share)
{
    for (std::size_t column = 0; column < m_sums.size(); ++column) {
        for (int channel = 0; channel < 4; ++channel)
            m_sums[column].channel[channel] += share * m_row[column].channel[channel];
    }
}

void BoxScaler::finishRow()
{
    auto* const target = reinterpret_cast<QRgb*>(m_result.scanLine(m_rowsDone++));
    for (std::size_t column = 0; column < m_sums.size(); ++column) {
        const auto& sum = m_sums[column].channel;
        target[column] = qRgba(rounded(sum[0]), rounded(sum[1]), rounded(sum[2]), rounded(sum[3]));
        m_sums[column] = {};
    }
}

} // namespace brindlecam
