#pragma once

#include "desktop/support/x11/Connection.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

namespace brindlecam::desktop {

/// What can be seen on the whole screen right now, in native pixels, without the pointer.
class Screen final {
public:
    explicit Screen(const QString& display);

    [[nodiscard]] QRect pixels() const;
    /// The root window with everything on it: RGB32, or RGB16 on a screen of depth 16.
    [[nodiscard]] QImage grab() const { return grab(pixels()); }
    [[nodiscard]] QImage grab(const QRect& pixels) const;
    [[nodiscard]] QColor pixel(QPoint place) const;
    /// Two equal grabs in a row mean that nothing moves any more; returns the last one, or a null
    /// image when it never comes to rest.
    [[nodiscard]] QImage grabAtRest() const;

private:
    Connection m_connection;
};

} // namespace brindlecam::desktop
