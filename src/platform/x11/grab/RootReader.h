#pragma once

#include "base/Result.h"

#include <QImage>
#include <QRect>

#include <memory>

namespace brindlecam {

class ServerPixels;

/// Reads one rectangle of the root window at once, on Qt's connection. The pad byte of the
/// pictures' pixels is undefined, the pointer never in them. Main thread; native pixels.
class RootReader final {
public:
    explicit RootReader(std::shared_ptr<ServerPixels> pixels);

    /// An error when the rectangle is empty or not wholly on the desktop.
    [[nodiscard]] Result<QImage> read(const QRect& native) const;
    /// The same for one that is known to lie there.
    [[nodiscard]] Result<QImage> readOnDesktop(const QRect& native) const;
    /// The desktop as it is now; RandR changes it while we run.
    [[nodiscard]] static QRect desktop();

private:
    [[nodiscard]] Result<QImage> readRaw(const QRect& native) const;

    const std::shared_ptr<ServerPixels> m_pixels;
};

} // namespace brindlecam
