#include "reading/Flatten.h"

#include "reading/Allocated.h"
#include "reading/Backgrounds.h"
#include "reading/ColourRegions.h"
#include "reading/NearestBackground.h"
#include "reading/SlidingMaximum.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace brindlecam {

namespace {

constexpr int kWhite = 255;
/// Where two backgrounds meet within so many pixels there is a rim, not text.
constexpr int kSeamReach = 2;
// The strongest difference this near is black.
constexpr int kAcrossReach = 16;
constexpr int kDownReach = 8;
// But never less than this, so that noise stays white.
constexpr int kLeastContrast = 40;
constexpr double kLeastShare = 0.3; ///< of the picture's strongest difference

/// The regions' labels with those that are no background taken out, and how many are left in use.
int keepBackgrounds(std::vector<int>& labels, const std::vector<bool>& chosen)
{
    std::vector<int> number(chosen.size(), ColourRegions::kNone);
    int count = 0;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        if (chosen[i])
            number[i] = count++;
    }
    for (int& label : labels) {
        if (label != ColourRegions::kNone)
            label = number[label];
    }
    return count;
}

/// Whether two backgrounds come near a pixel.
bool onSeam(const std::vector<int>& labels, QSize size, QPoint pixel)
{
    int seen = ColourRegions::kNone;
    const int bottom = std::min(size.height() - 1, pixel.y() + kSeamReach);
    const int right = std::min(size.width() - 1, pixel.x() + kSeamReach);
    for (int y = std::max(0, pixel.y() - kSeamReach); y <= bottom; ++y) {
        const int* const line = labels.data() + static_cast<std::size_t>(y) * size.width();
        for (int x = std::max(0, pixel.x() - kSeamReach); x <= right; ++x) {
            if (line[x] == ColourRegions::kNone || line[x] == seen)
                continue;
            if (seen != ColourRegions::kNone)
                return true;
            seen = line[x];
        }
    }
    return false;
}

std::vector<bool> seams(const std::vector<int>& labels, QSize size, StopRequest stop)
{
    std::vector<bool> found(labels.size());
    std::size_t index = 0;
    for (int y = 0; y < size.height(); ++y) {
        stop.check();
        for (int x = 0; x < size.width(); ++x, ++index)
            found[index] = labels[index] == ColourRegions::kNone && onSeam(labels, size, {x, y});
    }
    return found;
}

/// How far each pixel is from its background: the largest difference of the three channels.
QImage differences(const QImage& picture, const QImage& backgrounds, StopRequest stop)
{
    QImage result = allocated(QImage(picture.size(), QImage::Format_Grayscale8));
    for (int y = 0; y < picture.height(); ++y) {
        stop.check();
        const auto* const ink = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        const auto* const paper = reinterpret_cast<const QRgb*>(backgrounds.constScanLine(y));
        uchar* const line = result.scanLine(y);
        for (int x = 0; x < picture.width(); ++x) {
            const int red = std::abs(qRed(ink[x]) - qRed(paper[x]));
            const int green = std::abs(qGreen(ink[x]) - qGreen(paper[x]));
            const int blue = std::abs(qBlue(ink[x]) - qBlue(paper[x]));
            line[x] = static_cast<uchar>(std::max({red, green, blue}));
        }
    }
    return result;
}

void clearSeams(QImage& differences, const std::vector<bool>& found)
{
    std::size_t index = 0;
    for (int y = 0; y < differences.height(); ++y) {
        uchar* const line = differences.scanLine(y);
        for (int x = 0; x < differences.width(); ++x, ++index) {
            if (found[index])
                line[x] = 0;
        }
    }
}

/// Dark on white: each difference against the strongest one around it.
void normalise(QImage& differences, StopRequest stop)
{
    const QImage strongest = slidingMaximum(differences, kAcrossReach, kDownReach, stop);
    int most = 0;
    for (int y = 0; y < strongest.height(); ++y) {
        const uchar* const line = strongest.constScanLine(y);
        most = std::max<int>(most, *std::max_element(line, line + strongest.width()));
    }
    // What to multiply a difference by, for each value of the strongest around it; 16 bit fraction.
    std::array<unsigned, kWhite + 1> factor{};
    for (int value = 0; value <= kWhite; ++value) {
        const auto full = std::max<double>({double(value), kLeastContrast, kLeastShare * most});
        factor[value] = static_cast<unsigned>((kWhite << 16) / full);
    }
    for (int y = 0; y < differences.height(); ++y) {
        stop.check();
        uchar* const line = differences.scanLine(y);
        const uchar* const around = strongest.constScanLine(y);
        for (int x = 0; x < differences.width(); ++x) {
            const unsigned dark = (line[x] * factor[around[x]] + (1U << 15)) >> 16;
            line[x] = static_cast<uchar>(kWhite - std::min<unsigned>(kWhite, dark));
        }
    }
}

} // namespace

Flattened flatten(const QImage& picture, StopRequest stop)
{
    if (picture.isNull())
        return {};
    const QImage colours = allocated(picture.convertToFormat(QImage::Format_RGB32));
    const QSize size = colours.size();
    ColourRegions regions(colours, stop);
    const std::vector<bool> chosen = Backgrounds::among(regions, size, stop);
    std::vector<int> labels = regions.takeLabels();
    const int count = keepBackgrounds(labels, chosen);

    std::vector<bool> rims;
    if (count > 1)
        rims = seams(labels, size, stop);
    QImage behind = allocated(colours.copy());
    NearestBackground::spread(labels, behind, stop);
    Flattened result{differences(colours, behind, stop), BackgroundMap(labels, size)};
    if (!rims.empty())
        clearSeams(result.grey, rims);
    normalise(result.grey, stop);
    return result;
}

} // namespace brindlecam
