#include "desktop/support/Pictures.h"

#include <QDir>
#include <QRandomGenerator>

#include <algorithm>
#include <cstdlib>

namespace brindlecam::desktop {

QImage checkerboard(QSize pixels, int square, QColor first, QColor second)
{
    QImage board(pixels, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            board.setPixelColor(x, y, (x / square + y / square) % 2 == 0 ? first : second);
    }
    return board;
}

QImage pattern(QSize pixels)
{
    QImage image(pixels, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < pixels.width(); ++x)
            line[x] = patternAt({x, y});
    }
    return image;
}

QRgb patternAt(QPoint pixel)
{
    const int x = pixel.x();
    const int y = pixel.y();
    return qRgb((x * 37 + y) % 256, (y * 41 + x / 256) % 256, ((x ^ y) * 3 + 40) % 256);
}

QImage coarsePattern(QSize pixels)
{
    QImage picture(pixels, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            picture.setPixel(x, y, qRgb(x % 32 * 8, y % 32 * 8, (x / 32 + y / 32 * 5) % 32 * 8));
    }
    return picture;
}

QImage noise(QSize pixels)
{
    QRandomGenerator random(1);
    QImage picture(pixels, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            picture.setPixel(x, y, random.generate() | 0xff000000);
    }
    return picture;
}

int difference(const QImage& one, const QImage& other, const QRegion& where)
{
    constexpr int kAnother = 256;
    if (one.isNull() || one.size() != other.size())
        return kAnother;
    const QImage a = one.convertToFormat(QImage::Format_RGB32);
    const QImage b = other.convertToFormat(QImage::Format_RGB32);
    int most = 0;
    for (const QRect& rect : where& a.rect()) {
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            const auto* lineA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
            const auto* lineB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
            for (int x = rect.left(); x <= rect.right(); ++x) {
                most = std::max({most, std::abs(qRed(lineA[x]) - qRed(lineB[x])),
                                 std::abs(qGreen(lineA[x]) - qGreen(lineB[x])),
                                 std::abs(qBlue(lineA[x]) - qBlue(lineB[x]))});
            }
        }
    }
    return most;
}

bool samePixels(const QImage& one, const QImage& other)
{
    return difference(one, other, one.rect()) == 0;
}

QImage dimmed(const QImage& picture)
{
    constexpr double kKept = 0.55;
    QImage dark = picture.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < dark.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(dark.scanLine(y));
        for (int x = 0; x < dark.width(); ++x)
            line[x] = qRgb(qRound(qRed(line[x]) * kKept), qRound(qGreen(line[x]) * kKept),
                           qRound(qBlue(line[x]) * kKept));
    }
    return dark;
}

QStringList picturesIn(const QString& folder)
{
    QStringList paths;
    for (const QFileInfo& file :
         QDir(folder).entryInfoList({QStringLiteral("*.png")}, QDir::Files, QDir::Name))
        paths << file.filePath();
    return paths;
}

} // namespace brindlecam::desktop
