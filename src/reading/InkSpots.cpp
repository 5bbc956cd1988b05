#include "reading/InkSpots.h"

#include <algorithm>
#include <utility>

namespace brindlecam::InkSpots {

namespace {

/// A stretch of ink in one row, and the spot it belongs to.
struct Stretch {
    int left = 0;
    int right = 0;
    int spot = 0;
};

/// Spots that turned out to be one are joined; the smallest number stands for all.
class Spots final {
public:
    int add(int y, const Stretch& stretch)
    {
        m_boxes.emplace_back(QPoint(stretch.left, y), QPoint(stretch.right, y));
        m_parent.push_back(static_cast<int>(m_parent.size()));
        return m_parent.back();
    }

    int join(int a, int b)
    {
        a = root(a);
        b = root(b);
        if (a == b)
            return a;
        if (a > b)
            std::swap(a, b);
        m_parent[b] = a;
        m_boxes[a] |= m_boxes[b];
        return a;
    }

    void extend(int spot, int y, const Stretch& stretch)
    {
        m_boxes[root(spot)] |= QRect(QPoint(stretch.left, y), QPoint(stretch.right, y));
    }

    [[nodiscard]] std::vector<QRect> boxes() const
    {
        std::vector<QRect> result;
        for (std::size_t i = 0; i < m_boxes.size(); ++i) {
            if (m_parent[i] == static_cast<int>(i))
                result.push_back(m_boxes[i]);
        }
        return result;
    }

private:
    int root(int spot)
    {
        while (m_parent[spot] != spot) {
            m_parent[spot] = m_parent[m_parent[spot]];
            spot = m_parent[spot];
        }
        return spot;
    }

    std::vector<QRect> m_boxes;
    std::vector<int> m_parent;
};

std::vector<Stretch> stretches(const uchar* line, int width)
{
    std::vector<Stretch> found;
    for (int x = 0; x < width; ++x) {
        if (line[x] > kInk)
            continue;
        const int left = x;
        while (x + 1 < width && line[x + 1] <= kInk)
            ++x;
        found.push_back({left, x, -1});
    }
    return found;
}

} // namespace

std::vector<QRect> boxes(const QImage& grey, StopRequest stop)
{
    Spots spots;
    std::vector<Stretch> above;
    for (int y = 0; y < grey.height(); ++y) {
        stop.check();
        std::vector<Stretch> here = stretches(grey.constScanLine(y), grey.width());
        std::size_t first = 0;
        for (Stretch& stretch : here) {
            while (first < above.size() && above[first].right + 1 < stretch.left)
                ++first;
            for (std::size_t i = first; i < above.size() && above[i].left <= stretch.right + 1; ++i)
                stretch.spot =
                    stretch.spot < 0 ? above[i].spot : spots.join(stretch.spot, above[i].spot);
            if (stretch.spot < 0)
                stretch.spot = spots.add(y, stretch);
            else
                spots.extend(stretch.spot, y, stretch);
        }
        above.swap(here);
    }
    return spots.boxes();
}

} // namespace brindlecam::InkSpots
