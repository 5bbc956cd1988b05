#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

#include <vector>

namespace brindlecam::desktop {

/// What can be seen on the whole screen right now, in native pixels, without the pointer.
class Screen {
public:
    Screen() = default;
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    [[nodiscard]] virtual QRect pixels() const = 0;
    /// Where each monitor is.
    [[nodiscard]] virtual std::vector<QRect> monitors() const = 0;
    /// A part of it: RGB32, or RGB16 on a screen of depth 16.
    [[nodiscard]] virtual QImage grab(const QRect& pixels) const = 0;
    [[nodiscard]] QImage grab() const { return grab(pixels()); }
    [[nodiscard]] QColor pixel(QPoint place) const;
    /// Two equal grabs in a row mean that nothing moves any more; returns the last one, or a null
    /// image when it never comes to rest.
    [[nodiscard]] QImage grabAtRest() const;
};

} // namespace brindlecam::desktop
