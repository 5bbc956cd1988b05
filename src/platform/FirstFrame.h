#pragma once

#include <QSize>
#include <QtGlobal>

namespace brindlecam {

/// What a panel shows from the first moment, before it has painted anything itself.
class FirstFrame {
public:
    virtual ~FirstFrame() = default;

    /// In pixels.
    [[nodiscard]] virtual QSize size() const = 0;
    /// Writes whole rows of it, 32 bits a pixel and opaque (QImage::Format_RGB32).
    virtual void write(int firstRow, int rows, uchar* target, qsizetype bytesPerLine) const = 0;
};

} // namespace brindlecam
