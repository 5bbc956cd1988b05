#include "reading/ColourRegions.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace brindlecam {

namespace {

/// Largest difference per channel between neighbours of one region.
constexpr int kSameColour = 4;
/// No background is smaller: a square of seven pixels has to fit into it.
constexpr int kLeastArea = 49;

bool sameColour(QRgb a, QRgb b)
{
    if (a == b)
        return true;
    return std::abs(qRed(a) - qRed(b)) <= kSameColour &&
           std::abs(qGreen(a) - qGreen(b)) <= kSameColour &&
           std::abs(qBlue(a) - qBlue(b)) <= kSameColour;
}

/// The number that stands for all numbers joined with this one: the smallest of them.
int rootOf(std::vector<int>& parent, int number)
{
    while (parent[number] != number) {
        // Halving the way keeps later walks short.
        parent[number] = parent[parent[number]];
        number = parent[number];
    }
    return number;
}

int joined(std::vector<int>& parent, int a, int b)
{
    if (a == b)
        return a;
    a = rootOf(parent, a);
    b = rootOf(parent, b);
    return parent[std::max(a, b)] = std::min(a, b);
}

} // namespace

ColourRegions::ColourRegions(const QImage& picture, StopRequest stop)
    : m_width(picture.width())
    , m_height(picture.height())
    , m_labels(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height))
{
    connect(picture, stop);
    stop.check();
    number();
    measure(stop);
    m_parent.clear();
    m_parent.shrink_to_fit();
}

void ColourRegions::connect(const QImage& picture, StopRequest stop)
{
    int* label = m_labels.data();
    const QRgb* above = nullptr;
    for (int y = 0; y < m_height; ++y) {
        stop.check();
        const auto* const line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < m_width; ++x, ++label) {
            const bool left = x > 0 && sameColour(line[x], line[x - 1]);
            const bool up = above && sameColour(line[x], above[x]);
            if (left && up)
                *label = joined(m_parent, label[-1], label[-m_width]);
            else if (left)
                *label = label[-1];
            else if (up)
                *label = label[-m_width];
            else {
                *label = static_cast<int>(m_parent.size());
                m_parent.push_back(*label);
            }
        }
        above = line;
    }
}

void ColourRegions::number()
{
    // A parent is never larger than its child, so that one pass finds every root.
    for (int& parent : m_parent)
        parent = m_parent[parent];
    std::vector<int> areas(m_parent.size(), 0);
    for (int& label : m_labels) {
        label = m_parent[label];
        ++areas[label];
    }
    int least = kLeastArea;
    if (!areas.empty())
        least = std::min(least, *std::max_element(areas.begin(), areas.end()));
    // The areas are known; their places take the final numbers.
    for (int& entry : areas) {
        if (entry < least) {
            entry = kNone;
            continue;
        }
        m_regions.push_back({.area = entry});
        entry = static_cast<int>(m_regions.size()) - 1;
    }
    for (int& label : m_labels)
        label = areas[label];
}

void ColourRegions::measure(StopRequest stop)
{
    struct Bounds {
        int left = 1 << 30;
        int right = -1;
        int bottom = -1;
    };
    std::vector<Bounds> bounds(m_regions.size());
    // Side of the largest square that ends in each pixel of the row above and of this one so far.
    std::vector<int> squares(m_width, 0);
    const int* label = m_labels.data();
    for (int y = 0; y < m_height; ++y) {
        stop.check();
        int diagonal = 0;
        for (int x = 0; x < m_width; ++x, ++label) {
            const int above = squares[x];
            if (*label == kNone) {
                squares[x] = 0;
                diagonal = above;
                continue;
            }
            const bool grows = x > 0 && y > 0 && label[-1] == *label && label[-m_width] == *label &&
                               label[-m_width - 1] == *label;
            squares[x] = grows ? 1 + std::min({above, diagonal, squares[x - 1]}) : 1;
            diagonal = above;
            Region& region = m_regions[*label];
            Bounds& bound = bounds[*label];
            if (bound.right < 0) {
                region.first = y * m_width + x;
                region.box.setTop(y);
            }
            bound.left = std::min(bound.left, x);
            bound.right = std::max(bound.right, x);
            bound.bottom = y;
            region.square = std::max(region.square, squares[x]);
            if (x == 0 || y == 0 || x == m_width - 1 || y == m_height - 1)
                ++region.contact;
        }
    }
    for (std::size_t i = 0; i < m_regions.size(); ++i) {
        const QPoint top(bounds[i].left, m_regions[i].box.top());
        m_regions[i].box = QRect(top, QPoint(bounds[i].right, bounds[i].bottom));
    }
}

int ColourRegions::holes(int region) const
{
    // Walks along the outline, the region to the right, and adds up what lies within.
    constexpr std::array<QPoint, 4> kSteps{QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0),
                                           QPoint(0, -1)};
    // The pixels ahead of a corner, seen from it: to the left and to the right of each direction.
    constexpr std::array<QPoint, 4> kAheadLeft{QPoint(0, -1), QPoint(0, 0), QPoint(-1, 0),
                                               QPoint(-1, -1)};
    constexpr std::array<QPoint, 4> kAheadRight{QPoint(0, 0), QPoint(-1, 0), QPoint(-1, -1),
                                                QPoint(0, -1)};
    const auto inside = [this, region](QPoint pixel) {
        return pixel.x() >= 0 && pixel.y() >= 0 && pixel.x() < m_width && pixel.y() < m_height &&
               m_labels[static_cast<std::size_t>(pixel.y()) * m_width + pixel.x()] == region;
    };
    const int first = m_regions[region].first;
    const QPoint start(first % m_width, first / m_width);
    QPoint corner = start;
    std::size_t direction = 0;
    qint64 within = 0;
    do {
        corner += kSteps[direction];
        within -= static_cast<qint64>(kSteps[direction].x()) * corner.y();
        if (!inside(corner + kAheadRight[direction]))
            direction = (direction + 1) % kSteps.size();
        else if (inside(corner + kAheadLeft[direction]))
            direction = (direction + 3) % kSteps.size();
    } while (corner != start || direction != 0);
    return static_cast<int>(within - m_regions[region].area);
}

} // namespace brindlecam
