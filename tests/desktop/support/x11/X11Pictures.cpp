#include "desktop/support/x11/X11Pictures.h"

namespace brindlecam::desktop {

namespace {

QImage::Format formatOf(std::uint8_t depth)
{
    switch (depth) {
    case 16:
        return QImage::Format_RGB16;
    case 32:
        return QImage::Format_ARGB32_Premultiplied;
    default:
        return QImage::Format_RGB32;
    }
}

} // namespace

xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture)
{
    return uploaded(connection, picture, connection.screen().root_depth);
}

xcb_pixmap_t uploaded(const Connection& connection, const QImage& picture, std::uint8_t depth)
{
    const QImage pixels = picture.convertToFormat(formatOf(depth));
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
