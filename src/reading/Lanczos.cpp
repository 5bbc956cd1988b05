#include "reading/Lanczos.h"

#include "reading/Allocated.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace brindlecam {

namespace {

constexpr int kLobes = 3;
constexpr int kTaps = 2 * kLobes;

/// The source pixels that one target pixel is made of; beyond the edge the last one counts on.
struct Mix {
    std::array<int, kTaps> source{};
    std::array<float, kTaps> weight{};
};

double lanczos(double x)
{
    if (std::abs(x) < 1e-9)
        return 1;
    if (std::abs(x) >= kLobes)
        return 0;
    const double angle = std::numbers::pi * x;
    return kLobes * std::sin(angle) * std::sin(angle / kLobes) / (angle * angle);
}

std::vector<Mix> mixes(int from, int to)
{
    std::vector<Mix> result(to);
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * from / to - 0.5;
        const int first = static_cast<int>(std::floor(centre)) - kLobes + 1;
        std::array<double, kTaps> weights{};
        double sum = 0;
        for (int tap = 0; tap < kTaps; ++tap) {
            weights[tap] = lanczos(centre - (first + tap));
            sum += weights[tap];
        }
        for (int tap = 0; tap < kTaps; ++tap) {
            result[i].source[tap] = std::clamp(first + tap, 0, from - 1);
            result[i].weight[tap] = static_cast<float>(weights[tap] / sum);
        }
    }
    return result;
}

void widen(const uchar* line, const std::vector<Mix>& columns, float* result)
{
    for (const Mix& column : columns) {
        float sum = 0;
        for (int tap = 0; tap < kTaps; ++tap)
            sum += column.weight[tap] * static_cast<float>(line[column.source[tap]]);
        *result++ = sum;
    }
}

void mixRows(const std::array<const float*, kTaps>& rows, const Mix& mix, uchar* line, int width)
{
    constexpr float kMostValue = 255;
    for (int x = 0; x < width; ++x) {
        float sum = 0.5F;
        for (int tap = 0; tap < kTaps; ++tap)
            sum += mix.weight[tap] * rows[tap][x];
        line[x] = static_cast<uchar>(std::clamp(sum, 0.0F, kMostValue));
    }
}

} // namespace

QImage enlarged(const QImage& grey, double factor, StopRequest stop)
{
    const int width = static_cast<int>(std::lround(grey.width() * factor));
    const int height = static_cast<int>(std::lround(grey.height() * factor));
    if (grey.isNull() || (width <= grey.width() && height <= grey.height()))
        return grey;
    const std::vector<Mix> columns = mixes(grey.width(), width);
    const std::vector<Mix> rows = mixes(grey.height(), height);

    // Only the widened rows in use are kept, each in the place of one that is needed no more.
    std::vector<float> kept(static_cast<std::size_t>(kTaps) * width);
    const auto place = [&](int row) {
        return kept.data() + static_cast<std::size_t>(row % kTaps) * width;
    };
    int widened = 0;
    QImage result = allocated(QImage(width, height, QImage::Format_Grayscale8));
    for (int y = 0; y < height; ++y) {
        stop.check();
        for (; widened <= rows[y].source.back(); ++widened)
            widen(grey.constScanLine(widened), columns, place(widened));
        std::array<const float*, kTaps> used{};
        for (int tap = 0; tap < kTaps; ++tap)
            used[tap] = place(rows[y].source[tap]);
        mixRows(used, rows[y], result.scanLine(y), width);
    }
    return result;
}

} // namespace brindlecam
