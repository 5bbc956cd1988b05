#include "canvas/DimmedFrame.h"

#include "canvas/HintPicture.h"
#include "pictures/Dimming.h"

#include <QPainter>

#include <utility>

namespace brindlecam {

DimmedFrame::DimmedFrame(QImage bright, const HintPicture& hint)
    : m_bright(std::move(bright))
    , m_hint(hint)
{
}

void DimmedFrame::write(int firstRow, int rows, uchar* target, qsizetype bytesPerLine) const
{
    const QRect part(0, firstRow, m_bright.width(), rows);
    Dimming::dim(m_bright, part, target, bytesPerLine);
    if (!part.intersects(m_hint.pixels()))
        return;
    QImage band(target, part.width(), rows, bytesPerLine, QImage::Format_RGB32);
    QPainter painter(&band);
    painter.drawImage(m_hint.pixels().topLeft() - part.topLeft(), m_hint.image());
}

} // namespace brindlecam
