#include "reading/NearestBackground.h"

#include <array>
#include <utility>

namespace brindlecam::NearestBackground {

void spread(std::vector<int>& labels, QImage& colours, StopRequest stop)
{
    const int width = colours.width();
    const int height = colours.height();
    // A 32-bit picture has no padding, so that one index serves both.
    auto* const colour = reinterpret_cast<QRgb*>(colours.bits());
    std::vector<int> front;
    std::vector<int> next;
    const auto visit = [&](int index) {
        const int x = index % width;
        const int y = index / width;
        const std::array<std::pair<bool, int>, 4> neighbours{
            std::pair(x > 0, index - 1), std::pair(x < width - 1, index + 1),
            std::pair(y > 0, index - width), std::pair(y < height - 1, index + width)};
        for (const auto& [exists, neighbour] : neighbours) {
            if (!exists || labels[neighbour] >= 0)
                continue;
            labels[neighbour] = labels[index];
            colour[neighbour] = colour[index];
            next.push_back(neighbour);
        }
    };
    // The first ring: what is no background and touches one. Taken before anything has grown.
    const int count = width * height;
    for (int index = 0, x = 0; index < count; ++index, x = x + 1 == width ? 0 : x + 1) {
        if (labels[index] < 0)
            continue;
        if ((x > 0 && labels[index - 1] < 0) || (x < width - 1 && labels[index + 1] < 0) ||
            (index >= width && labels[index - width] < 0) ||
            (index + width < count && labels[index + width] < 0))
            front.push_back(index);
    }
    while (!front.empty()) {
        stop.check();
        for (const int index : front)
            visit(index);
        front.swap(next);
        next.clear();
    }
}

} // namespace brindlecam::NearestBackground
