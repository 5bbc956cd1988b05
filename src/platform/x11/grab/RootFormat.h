#pragma once

#include <QImage>

#include <xcb/xcb.h>

namespace brindlecam {

/// How the X server lays out the pixels of its root window.
struct RootFormat {
    QImage::Format format = QImage::Format_Invalid; ///< invalid: Qt has no such layout
    int bitsPerPixel = 0;
    int lineBits = 0; ///< lines are padded to a multiple of this

    [[nodiscard]] static RootFormat of(const xcb_setup_t& setup, const xcb_screen_t& screen);

    /// Whether pictures are used as the server delivers them.
    [[nodiscard]] bool isDirect() const { return format == QImage::Format_RGB32; }
    [[nodiscard]] qsizetype bytesPerLine(int width) const;
    /// A picture in this layout as the one in the layout that everybody uses; null without memory.
    [[nodiscard]] QImage converted(QImage picture) const;
};

} // namespace brindlecam
