#pragma once

#include "platform/FirstFrame.h"

#include <QImage>

namespace brindlecam {

class HintPicture;

/// What a session begins with on one screen: all of it dimmed, and the hint.
class DimmedFrame final : public FirstFrame {
public:
    /// The frozen screen; the hint outlives this.
    DimmedFrame(QImage bright, const HintPicture& hint);

    [[nodiscard]] QSize size() const override { return m_bright.size(); }
    void write(int firstRow, int rows, uchar* target, qsizetype bytesPerLine) const override;

private:
    const QImage m_bright;
    const HintPicture& m_hint;
};

} // namespace brindlecam
