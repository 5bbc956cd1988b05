#include "pictures/BoxScaler.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace brindlecam {

namespace {

constexpr std::size_t kChannels = 4;

uchar rounded(float channel)
{
    return static_cast<uchar>(std::clamp(static_cast<int>(channel + 0.5F), 0, 255));
}

} // namespace

BoxScaler::BoxScaler(QSize from, QSize to)
    : m_from(from)
    , m_to(to)
    , m_sums(static_cast<std::size_t>(from.width()) * kChannels)
    , m_scale(static_cast<float>(double(to.width()) / from.width() * to.height() / from.height()))
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

void BoxScaler::add(const QRgb* row)
{
    if (m_result.isNull() || m_rowsAdded == m_from.height())
        return;
    // In rows of the result: where this one begins and ends.
    const double begin = double(m_rowsAdded) * m_to.height() / m_from.height();
    const double end = double(m_rowsAdded + 1) * m_to.height() / m_from.height();
    const double whole = end - begin;
    ++m_rowsAdded;
    const double border = m_rowsDone + 1;
    addShare(row, static_cast<float>((std::min(end, border) - begin) / whole));
    if (end < border && m_rowsAdded < m_from.height())
        return;
    finishRow();
    if (end > border && m_rowsDone < m_to.height())
        addShare(row, static_cast<float>((end - border) / whole));
}

void BoxScaler::addShare(const QRgb* row, float share)
{
    const auto* const bytes = reinterpret_cast<const uchar*>(row);
    float* const sums = m_sums.data();
    const std::size_t count = m_sums.size();
    for (std::size_t i = 0; i < count; ++i)
        sums[i] += share * static_cast<float>(bytes[i]);
}

QRgb BoxScaler::meanOf(const Span& span) const
{
    const float* column = m_sums.data() + span.first * kChannels;
    float mean[kChannels];
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        mean[channel] = span.firstShare * column[channel];
    for (std::size_t i = 1; i < span.count; ++i) {
        column += kChannels;
        const float share = i + 1 == span.count ? span.lastShare : 1;
        for (std::size_t channel = 0; channel < kChannels; ++channel)
            mean[channel] += share * column[channel];
    }
    uchar bytes[kChannels];
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        bytes[channel] = rounded(mean[channel] * m_scale);
    QRgb pixel = 0;
    std::memcpy(&pixel, bytes, sizeof(pixel));
    return pixel;
}

void BoxScaler::finishRow()
{
    auto* const target = reinterpret_cast<QRgb*>(m_result.scanLine(m_rowsDone++));
    std::ranges::transform(m_spans, target, [this](const Span& span) { return meanOf(span); });
    std::ranges::fill(m_sums, 0.0F);
}

} // namespace brindlecam
