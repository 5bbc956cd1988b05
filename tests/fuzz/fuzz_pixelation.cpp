#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Promise.h"
#include "pictures/Pixelation.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>

namespace brindlecam {

namespace {

constexpr int kMostSide = 90;      // pixels of the picture
constexpr int kFar = 1000000;      // pixels
constexpr int kNear = 120;         // pixels
constexpr int kSmallestSide = 2;   // pixels
constexpr qreal kMostCell = 300;   // pixels
constexpr qreal kTie = 1e-6;       // pixels: what adding up reals may lose
constexpr QSize kCanvas(160, 100); // pixels
constexpr QRgb kPaper = 0xff112233;

constexpr std::array kFormats{
    QImage::Format_RGB32,    QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied,
    QImage::Format_RGBX8888, QImage::Format_RGB16,  QImage::Format_RGB888};

/// Gradients and grain, so that every cell has an average of its own.
QImage picture(fuzz::FuzzInput& input)
{
    const int width = input.integer(0, kMostSide);
    const int height = input.integer(0, kMostSide);
    QImage drawn(width, height, QImage::Format_RGB32);
    const int grain = input.integer(1, UINT8_MAX);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            drawn.setPixel(x, y, qRgb(x * grain % 256, y * 5 % 256, (x * y + grain) % 256));
    }
    return drawn.convertToFormat(input.oneOf(kFormats));
}

int coordinate(fuzz::FuzzInput& input)
{
    return input.oneIn(8) ? input.integer(-kFar, kFar) : input.integer(-kNear / 4, kNear);
}

QRect somewhere(fuzz::FuzzInput& input)
{
    const int x = coordinate(input);
    const int y = coordinate(input);
    const int width = coordinate(input);
    return {x, y, width, coordinate(input)};
}

/// The average of what one cell covers, pixel by pixel; cells are counted from the lower left.
QRgb average(const QImage& part, int column, int row, qreal side)
{
    const auto first = [side](int cell) {
        return static_cast<int>(std::ceil(cell * side - 0.5 - kTie));
    };
    int count = 0;
    std::array<int, 3> sums{};
    for (int up = first(row); up < first(row + 1); ++up) {
        for (int x = first(column); x < first(column + 1); ++x) {
            const QRgb pixel =
                part.pixel(std::min(x, part.width() - 1), std::max(part.height() - 1 - up, 0));
            sums[0] += qRed(pixel);
            sums[1] += qGreen(pixel);
            sums[2] += qBlue(pixel);
            ++count;
        }
    }
    const auto rounded = [count](int sum) { return (sum + count / 2) / count; };
    return qRgb(rounded(sums[0]), rounded(sums[1]), rounded(sums[2]));
}

void checkCells(const Pixelation& patch, const QImage& part, qreal side)
{
    const QImage& cells = patch.cells();
    BRINDLECAM_PROMISE(patch.size() == part.size());
    BRINDLECAM_PROMISE((cells.width() - 1) * side < part.width());
    BRINDLECAM_PROMISE((cells.height() - 1) * side < part.height());
    BRINDLECAM_PROMISE(cells.width() * side >= part.width() - 0.5 - kTie);
    BRINDLECAM_PROMISE(cells.height() * side >= part.height() - 0.5 - kTie);
    for (int y = 0; y < cells.height(); ++y) {
        for (int x = 0; x < cells.width(); ++x)
            BRINDLECAM_PROMISE(cells.pixel(x, y) == average(part, x, cells.height() - 1 - y, side));
    }
}

/// How and where a patch is drawn.
struct Place {
    qreal scale = 1;
    QPoint origin;             ///< pixels
    QRectF target;             ///< what the painter counts in
    std::optional<QRect> clip; ///< pixels

    explicit Place(fuzz::FuzzInput& input)
        : scale(input.integer(25, 400) / 100.0)
    {
        const int left = input.integer(-100, 100);
        origin = {left, input.integer(-100, 100)};
        const qreal x = input.integer(-400, 1200) / 8.0;
        const qreal y = input.integer(-400, 1200) / 8.0;
        const qreal width = input.integer(0, 1600) / 8.0;
        target = {x, y, width, input.integer(0, 1600) / 8.0};
        if (input.flag()) {
            const int clipLeft = input.integer(0, kCanvas.width() - 1);
            const int clipTop = input.integer(0, kCanvas.height() - 1);
            const int clipWidth = input.integer(1, kCanvas.width());
            clip = {clipLeft, clipTop, clipWidth, input.integer(1, kCanvas.height())};
        }
    }

    [[nodiscard]] QRectF targetPixels() const
    {
        return {target.topLeft() * scale + origin, target.size() * scale};
    }

    /// The part `part` of the canvas as a picture of its own.
    [[nodiscard]] QImage drawn(const Pixelation& patch, const QRect& part) const
    {
        QImage canvas(part.size(), QImage::Format_RGB32);
        canvas.fill(kPaper);
        QPainter painter(&canvas);
        if (clip)
            painter.setClipRect(clip->translated(-part.topLeft()));
        painter.translate(origin - part.topLeft());
        painter.scale(scale, scale);
        patch.draw(painter, target);
        return canvas;
    }
};

/// Pixels whose centre is inside show a cell, and no others change.
void checkDrawn(const Pixelation& patch, const Place& place)
{
    const QImage canvas = place.drawn(patch, QRect({}, kCanvas));
    std::set<QRgb> colours;
    for (int y = 0; y < patch.cells().height(); ++y) {
        for (int x = 0; x < patch.cells().width(); ++x)
            colours.insert(patch.cells().pixel(x, y));
    }
    const QRectF target = place.targetPixels();
    const QRectF surely = target.adjusted(kTie, kTie, -kTie, -kTie);
    const QRectF maybe = target.adjusted(-2 * kTie, -2 * kTie, 2 * kTie, 2 * kTie);
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            const QPointF centre(x + 0.5, y + 0.5);
            const bool shown = !place.clip || place.clip->contains(x, y);
            const QRgb pixel = canvas.pixel(x, y);
            if (shown && surely.isValid() && surely.contains(centre))
                BRINDLECAM_PROMISE(colours.contains(pixel));
            else if (!shown || !maybe.contains(centre))
                BRINDLECAM_PROMISE(pixel == kPaper);
        }
    }
}

/// Painted in parts it looks as painted at once.
void checkParts(const Pixelation& patch, const Place& place, fuzz::FuzzInput& input)
{
    const int x = input.integer(0, kCanvas.width() - 1);
    const int y = input.integer(0, kCanvas.height() - 1);
    const QRect whole({}, kCanvas);
    const QRect part = QRect(x, y, kCanvas.width() / 3, kCanvas.height() / 3) & whole;
    BRINDLECAM_PROMISE(place.drawn(patch, part) == place.drawn(patch, whole).copy(part));
}

} // namespace

} // namespace brindlecam

/// Pixelations of any part of any picture, drawn anywhere: cells are averages of what they cover,
/// and nothing of the picture itself is shown.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    const QImage frozen = picture(input);
    const QRect pixels = somewhere(input);
    const qreal cell = input.real(0, input.flag() ? kMostCell : 20);
    const auto patch = Pixelation::of(frozen, pixels, cell);
    const QRect part = pixels & frozen.rect();
    const bool large = pixels.width() >= kSmallestSide && pixels.height() >= kSmallestSide;
    BRINDLECAM_PROMISE(patch.has_value() == (large && !part.isEmpty()));
    if (!patch)
        return 0;
    checkCells(*patch, frozen.convertToFormat(QImage::Format_RGB32).copy(part),
               std::clamp(cell, 1.0, 256.0));
    const Place place(input);
    checkDrawn(*patch, place);
    checkParts(*patch, place, input);
    return 0;
}
