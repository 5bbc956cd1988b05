#pragma once

#include <QImage>
#include <QPoint>

#include <xcb/xfixes.h>

namespace brindlecam {

/// What the pointer looks like, and where: the server never draws it into the root's pixels.
struct PointerPicture {
    QImage image;   ///< premultiplied
    QPoint topLeft; ///< of the image, on the desktop; native pixels

    /// A copy of what the server tells, its hot spot where the pointer is.
    [[nodiscard]] static PointerPicture of(const xcb_xfixes_get_cursor_image_reply_t& reply);

    /// Paints it where it belongs in a picture of the desktop that begins at `origin`.
    void paintInto(QImage& picture, QPoint origin) const;
};

} // namespace brindlecam
