#pragma once

#include <QImage>
#include <QSize>

namespace brindlecam::test {

/// Pictures that behave like what people capture, the same on every machine: nothing of the system
/// (fonts, theme) goes into them. Both are RGB32 and work at any size.
namespace PagePainter {

/// A desktop: two windows with title bars, a sidebar with icons, lines of antialiased text, a table
/// and a code listing. `size` in pixels; `scale` in pixels per point makes everything larger, as
/// on a dense display.
[[nodiscard]] QImage interfacePage(QSize size, qreal scale = 1);

/// A page full of photograph: landscape with sky, ridges and water, soft shading and fine grain.
/// `size` in pixels.
[[nodiscard]] QImage photoPage(QSize size);

} // namespace PagePainter

} // namespace brindlecam::test
