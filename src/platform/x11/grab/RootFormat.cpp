#include "platform/x11/grab/RootFormat.h"

#include <QSysInfo>

#include <array>
#include <cstdint>
#include <utility>

namespace brindlecam {

namespace {

struct KnownLayout {
    int bitsPerPixel;
    std::uint32_t red, green, blue;
    QImage::Format format;
};

constexpr std::array kKnownLayouts{
    KnownLayout{32, 0xff0000, 0xff00, 0xff, QImage::Format_RGB32},
    KnownLayout{32, 0xff, 0xff00, 0xff0000, QImage::Format_RGBX8888},
    KnownLayout{32, 0x3ff00000, 0xffc00, 0x3ff, QImage::Format_RGB30},
    KnownLayout{32, 0x3ff, 0xffc00, 0x3ff00000, QImage::Format_BGR30},
    KnownLayout{24, 0xff0000, 0xff00, 0xff, QImage::Format_BGR888},
    KnownLayout{24, 0xff, 0xff00, 0xff0000, QImage::Format_RGB888},
    KnownLayout{16, 0xf800, 0x7e0, 0x1f, QImage::Format_RGB16},
    KnownLayout{16, 0x7c00, 0x3e0, 0x1f, QImage::Format_RGB555},
};

const xcb_visualtype_t* rootVisual(const xcb_screen_t& screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == screen.root_visual)
                return visual.data;
        }
    }
    return nullptr;
}

bool hasOurByteOrder(const xcb_setup_t& setup)
{
    constexpr int kOurs = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? XCB_IMAGE_ORDER_LSB_FIRST
                                                                        : XCB_IMAGE_ORDER_MSB_FIRST;
    return setup.image_byte_order == kOurs;
}

} // namespace

RootFormat RootFormat::of(const xcb_setup_t& setup, const xcb_screen_t& screen)
{
    RootFormat result;
    for (auto pixmap = xcb_setup_pixmap_formats_iterator(&setup); pixmap.rem > 0;
         xcb_format_next(&pixmap)) {
        if (pixmap.data->depth == screen.root_depth) {
            result.bitsPerPixel = pixmap.data->bits_per_pixel;
            result.lineBits = pixmap.data->scanline_pad;
        }
    }
    const auto* const visual = rootVisual(screen);
    if (!visual || !hasOurByteOrder(setup))
        return result;
    for (const auto& layout : kKnownLayouts) {
        if (layout.bitsPerPixel == result.bitsPerPixel && layout.red == visual->red_mask &&
            layout.green == visual->green_mask && layout.blue == visual->blue_mask)
            result.format = layout.format;
    }
    return result;
}

qsizetype RootFormat::bytesPerLine(int width) const
{
    const qsizetype bits = qsizetype(width) * bitsPerPixel;
    return (bits + lineBits - 1) / lineBits * lineBits / 8;
}

QImage RootFormat::converted(QImage picture) const
{
    return isDirect() ? picture : std::move(picture).convertToFormat(QImage::Format_RGB32);
}

} // namespace brindlecam
