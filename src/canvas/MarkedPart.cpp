#include "canvas/MarkedPart.h"

#include "base/Geometry.h"
#include "canvas/Annotation.h"

namespace brindlecam {

namespace {

bool hasGlyphs(const Annotation& mark)
{
    return mark.tool() == Tool::text || mark.tool() == Tool::number;
}

} // namespace

MarkedPart::MarkedPart(QImage& target, QSizeF canvas, QSize picture, const QRect& part)
    : m_target(target)
    , m_canvas(canvas)
    , m_picture(picture)
    , m_part(part)
    , m_painter(&target)
{
    m_painter.setClipRect(target.rect()); // a long stroke asks what of it can be seen
    countInPoints(m_painter, part.topLeft());
}

void MarkedPart::countInPoints(QPainter& painter, QPoint topLeft) const
{
    const PixelsPerPoint ratio = pixelsPerPoint(m_canvas, m_picture);
    painter.translate(-topLeft);
    painter.scale(ratio.x, ratio.y);
}

void MarkedPart::draw(const Annotation& mark)
{
    const QRect area = pixelRect(mark.paintedBounds(), m_canvas, m_picture);
    if (!m_part.intersects(area))
        return;
    if (hasGlyphs(mark) && !m_part.contains(area.topLeft()))
        drawApart(mark, area);
    else
        mark.draw(m_painter);
}

// On a picture that begins where the mark does. Qt (6.4 and 6.11) cuts off what is too fine of a
// glyph's place towards the corner of the picture, from both sides (QFixed::fromReal): a text that
// begins before it would have all glyphs elsewhere, by up to a quarter of a pixel.
void MarkedPart::drawApart(const Annotation& mark, const QRect& area)
{
    const QRect shown = area & m_part;
    // Nothing is needed beyond what is shown; what lies before it is cleared for nobody to see.
    QImage apart(QRect(area.topLeft(), shown.bottomRight()).size(), m_target.format());
    apart.fill(Qt::black);
    QPainter painter(&apart);
    painter.drawImage(shown.topLeft() - area.topLeft(), m_target,
                      shown.translated(-m_part.topLeft()));
    countInPoints(painter, area.topLeft());
    mark.draw(painter);
    painter.end();

    m_painter.save();
    m_painter.resetTransform();
    m_painter.setCompositionMode(QPainter::CompositionMode_Source);
    m_painter.drawImage(shown.topLeft() - m_part.topLeft(), apart,
                        shown.translated(-area.topLeft()));
    m_painter.restore();
}

} // namespace brindlecam
