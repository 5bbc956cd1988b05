#include "reading/SlidingMaximum.h"

#include "reading/Allocated.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace brindlecam {

namespace {

/// One line, in blocks as long as the window: the window's largest value is that of one block's end
/// and the next block's beginning.
void maximumAlong(const uchar* values, uchar* result, int length, int reach, std::vector<uchar>& up,
                  std::vector<uchar>& down)
{
    const int window = 2 * reach + 1;
    const int padded = (length + 2 * reach + window - 1) / window * window;
    up.assign(padded, 0);
    std::memcpy(up.data() + reach, values, length);
    down = up;
    for (int block = 0; block < padded; block += window) {
        for (int i = block + 1; i < block + window; ++i)
            up[i] = std::max(up[i], up[i - 1]);
        for (int i = block + window - 2; i >= block; --i)
            down[i] = std::max(down[i], down[i + 1]);
    }
    for (int i = 0; i < length; ++i)
        result[i] = std::max(down[i], up[i + 2 * reach]);
}

void raise(uchar* target, const uchar* other, int length)
{
    for (int i = 0; i < length; ++i)
        target[i] = std::max(target[i], other[i]);
}

} // namespace

QImage slidingMaximum(const QImage& values, int acrossReach, int downReach, StopRequest stop)
{
    const int width = values.width();
    const int height = values.height();
    QImage across = allocated(QImage(values.size(), QImage::Format_Grayscale8));
    std::vector<uchar> up;
    std::vector<uchar> down;
    for (int y = 0; y < height; ++y) {
        stop.check();
        maximumAlong(values.constScanLine(y), across.scanLine(y), width, acrossReach, up, down);
    }

    // The same downwards, whole rows at a time.
    const int window = 2 * downReach + 1;
    QImage fromTop = allocated(across.copy());
    QImage fromBottom = allocated(across.copy());
    for (int y = 0; y < height; ++y) {
        if ((y + downReach) % window != 0 && y > 0)
            raise(fromTop.scanLine(y), fromTop.constScanLine(y - 1), width);
    }
    for (int y = height - 2; y >= 0; --y) {
        if ((y + 1 + downReach) % window != 0)
            raise(fromBottom.scanLine(y), fromBottom.constScanLine(y + 1), width);
    }
    for (int y = 0; y < height; ++y) {
        uchar* const line = across.scanLine(y);
        const int top = std::max(0, y - downReach);
        std::memcpy(line, fromBottom.constScanLine(top), width);
        // The last row's block may have begun before the window: then all of it is there already.
        const int bottom = y + downReach;
        if (bottom - (bottom + downReach) % window < height)
            raise(line, fromTop.constScanLine(std::min(height - 1, bottom)), width);
    }
    return across;
}

} // namespace brindlecam
