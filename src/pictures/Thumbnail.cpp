#include "pictures/Thumbnail.h"

#include "pictures/BoxScaler.h"
#include "pictures/PngRows.h"

#include <QByteArray>
#include <QFile>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <vector>

namespace brindlecam {

namespace {

const QByteArray kPngSignature("\x89PNG\r\n\x1a\n");
constexpr qsizetype kInterlaceAt = 28; ///< the last byte of a PNG file's first chunk
constexpr char kInSevenPasses = 1;

std::optional<Thumbnail> scaled(BoxScaler& scaler, QSize pixels)
{
    if (scaler.result().isNull())
        return std::nullopt;
    return Thumbnail{scaler.result(), pixels};
}

std::optional<Thumbnail> ofRows(PngRows& rows, QSize most)
{
    const QSize size = rows.size();
    BoxScaler scaler(size, Thumbnail::fitted(size, most));
    std::vector<QRgb> row(static_cast<std::size_t>(size.width()));
    for (int y = 0; y < size.height(); ++y) {
        if (!rows.next(row.data()))
            return std::nullopt;
        scaler.add(row.data());
    }
    return scaled(scaler, size);
}

bool isPngInRows(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray beginning = file.read(kInterlaceAt + 1);
    return beginning.startsWith(kPngSignature) &&
           !(beginning.size() > kInterlaceAt && beginning.at(kInterlaceAt) == kInSevenPasses);
}

bool has32Bits(const QImage& image)
{
    return image.format() == QImage::Format_RGB32 ||
           image.format() == QImage::Format_ARGB32_Premultiplied;
}

} // namespace

QSize Thumbnail::fitted(QSize picture, QSize most)
{
    if (picture.isEmpty() || most.isEmpty())
        return {};
    const double factor = std::min(
        {1.0, double(most.width()) / picture.width(), double(most.height()) / picture.height()});
    const auto side = [factor](int pixels, int limit) {
        return std::clamp(static_cast<int>(std::lround(pixels * factor)), 1,
                          std::min(pixels, limit));
    };
    return {side(picture.width(), most.width()), side(picture.height(), most.height())};
}

std::optional<Thumbnail> Thumbnail::of(const QImage& picture, QSize most)
{
    const QSize small = fitted(picture.size(), most);
    const QImage source =
        has32Bits(picture) ? picture : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (small.isEmpty() || source.isNull())
        return std::nullopt;
    BoxScaler scaler(source.size(), small);
    for (int y = 0; y < source.height(); ++y)
        scaler.add(reinterpret_cast<const QRgb*>(source.constScanLine(y)));
    auto thumbnail = scaled(scaler, source.size());
    // The fourth byte of a screen's pixel is anything.
    if (thumbnail && source.format() == QImage::Format_RGB32 &&
        !thumbnail->image.reinterpretAsFormat(QImage::Format_RGB32))
        return std::nullopt;
    return thumbnail;
}

std::optional<Thumbnail> Thumbnail::ofFile(const QString& path, QSize most)
{
    if (most.isEmpty())
        return std::nullopt;
    if (isPngInRows(path)) {
        const auto rows = PngRows::open(path);
        return rows ? ofRows(*rows, most) : std::nullopt;
    }
    return of(QImageReader(path).read(), most);
}

} // namespace brindlecam
