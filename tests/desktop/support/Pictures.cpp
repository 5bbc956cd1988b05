#include "desktop/support/Pictures.h"

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
            line[x] = qRgb((x * 37 + y) % 256, (y * 41 + x / 256) % 256, ((x ^ y) * 3 + 40) % 256);
    }
    return image;
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

xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture)
{
    const std::uint8_t depth = connection.screen().root_depth;
    const QImage pixels =
        picture.convertToFormat(depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32);
    const auto width = static_cast<std::uint16_t>(pixels.width());
    const xcb_pixmap_t pixmap = xcb_generate_id(connection.raw());
    xcb_create_pixmap(connection.raw(), depth, pixmap, connection.root(), width,
                      static_cast<std::uint16_t>(pixels.height()));
    const xcb_gcontext_t context = xcb_generate_id(connection.raw());
    xcb_create_gc(connection.raw(), context, pixmap, 0, nullptr);
    // Row by row stays below the longest request at every size.
    for (int y = 0; y < pixels.height(); ++y)
        xcb_put_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, 1, 0,
                      static_cast<std::int16_t>(y), 0, depth,
                      static_cast<std::uint32_t>(pixels.bytesPerLine()), pixels.constScanLine(y));
    xcb_free_gc(connection.raw(), context);
    return pixmap;
}

void hangWallpaper(const Connection& connection, const QImage& picture)
{
    const xcb_pixmap_t pixmap = uploaded(connection, picture);
    // For compositors, which paint the screen themselves.
    xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, connection.root(),
                        connection.atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP, 32, 1, &pixmap);
    xcb_change_window_attributes(connection.raw(), connection.root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection.raw(), 0, connection.root(), 0, 0, 0, 0);
    connection.sync();
}

} // namespace brindlecam::desktop
