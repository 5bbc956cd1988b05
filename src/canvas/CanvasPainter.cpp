#include "canvas/CanvasPainter.h"

#include "base/Geometry.h"
#include "base/RepaintArea.h"
#include "canvas/Annotation.h"
#include "canvas/Hint.h"
#include "canvas/HintPicture.h"
#include "canvas/Loupe.h"
#include "canvas/MarkOutline.h"
#include "canvas/MarkedPart.h"
#include "canvas/SelectionFrame.h"
#include "canvas/SizeLabel.h"
#include "pictures/PixelGrid.h"

#include <QPainter>

namespace brindlecam {

namespace {

/// Whether it covers all of what it spans, so that it is best drawn in place.
bool isArea(const Annotation& mark)
{
    return mark.tool() == Tool::pixelate;
}

} // namespace

CanvasPainter::CanvasPainter(const QImage& image, QSizeF size)
    : m_size(size)
    , m_dimView(image, size)
    , m_marked(image, size)
{
}

QRect CanvasPainter::pixels(const QRectF& selection) const
{
    return pixelRect(selection, m_size, image().size()).intersected(image().rect());
}

QRegion CanvasPainter::around(const QRectF& changed) const
{
    return repaintArea(changed, pixelsPerPoint(m_size, image().size()).x);
}

QRegion CanvasPainter::around(const std::vector<QRectF>& changed) const
{
    QRegion region;
    for (const QRectF& rect : changed)
        region += around(rect);
    return region;
}

QRegion CanvasPainter::show(const CanvasScene& scene)
{
    const CanvasScene before = std::exchange(m_scene, scene);
    m_dimView.setHole(scene.hole);
    return difference(before, scene);
}

QRegion CanvasPainter::differenceToFirstFrame() const
{
    CanvasScene firstFrame;
    firstFrame.hint = true;
    return difference(firstFrame, m_scene);
}

QRegion CanvasPainter::show(const AnnotationList::Marks& marks)
{
    const PixelsPerPoint ratio = pixelsPerPoint(m_size, image().size());
    QRegion stale;
    for (const QRect& rect : m_marked.setMarks(marks)) {
        stale += around({rect.x() / ratio.x, rect.y() / ratio.y, rect.width() / ratio.x,
                         rect.height() / ratio.y});
    }
    return stale;
}

// What of each element the two scenes do not share must be painted anew, where it was and where it
// is.
QRegion CanvasPainter::difference(const CanvasScene& before, const CanvasScene& after) const
{
    const qreal scale = pixelsPerPoint(m_size, image().size()).x;
    QRegion stale;
    if (before.hole != after.hole)
        stale += repaintAreaBetween(before.hole, after.hole, scale);
    if (before.hint != after.hint)
        stale += around(Hint::rect(m_size));
    for (const CanvasScene* scene : {&before, &after}) {
        const QRectF& selection = scene->selection;
        if (before.selection != after.selection && !selection.isEmpty())
            stale += around(SizeLabel::rect(selection, pixels(selection).size()));
        if (before.selection != after.selection || before.handles != after.handles)
            stale += SelectionFrame::covered(selection, scale);
        if (before.outlinedWindow != after.outlinedWindow && scene->outlinedWindow)
            stale += SelectionFrame::covered(*scene->outlinedWindow, scale);
        if (before.outlinedMark != after.outlinedMark && scene->outlinedMark)
            stale += MarkOutline::covered(*scene->outlinedMark, scale);
        if (before.loupePointer != after.loupePointer && scene->loupePointer)
            stale += around(Loupe::covered(Loupe::rect(*scene->loupePointer, m_size)));
    }
    return stale;
}

void CanvasPainter::paint(QPainter& painter, const QRegion& exposed, const Annotation* current)
{
    m_dimView.paint(painter, exposed);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_scene.outlinedWindow)
        SelectionFrame::paintHoveredWindow(painter, *m_scene.outlinedWindow);
    if (m_scene.hint && m_hintPicture)
        m_hintPicture->paint(painter);
    else if (m_scene.hint)
        Hint::paint(painter, m_size);
    if (!m_scene.selection.isEmpty()) {
        paintMarks(painter, exposed, current);
        paintSelection(painter, exposed);
    }
    if (m_scene.loupePointer)
        Loupe::paint(painter, *m_scene.loupePointer, image(), m_size);
}

// Marks end at the selection's edge, as they will in the picture.
void CanvasPainter::paintMarks(QPainter& painter, const QRegion& exposed, const Annotation* current)
{
    QRegion exposedPixels;
    for (const QRect& rect : exposed)
        exposedPixels += pixelRect(rect, m_size, image().size());
    exposedPixels &= pixels(m_scene.selection);
    m_marked.paint(painter, exposedPixels);

    const PixelGrid grid(painter); // a device knows its scale less exactly than the picture does
    if (current && isArea(*current)) {
        const PixelsPerPoint ratio = pixelsPerPoint(m_size, image().size());
        painter.save();
        painter.setClipRect(pixels(m_scene.selection), Qt::IntersectClip);
        painter.scale(ratio.x, ratio.y);
        current->draw(painter);
        painter.restore();
    }
    const QRegion parts = lines(current) & exposedPixels;
    std::optional<MarkOutline> outline;
    if (m_scene.outlinedMark && !parts.isEmpty())
        outline.emplace(*m_scene.outlinedMark);
    for (const QRect& part : parts)
        paintLines(painter, part, current, outline);
}

/// The pixels that the lines above the finished marks touch.
QRegion CanvasPainter::lines(const Annotation* current) const
{
    const QSize picture = image().size();
    QRegion touched;
    if (current && !isArea(*current)) {
        for (const QRectF& part : current->paintedParts())
            touched += pixelRect(part, m_size, picture);
    }
    if (m_scene.outlinedMark) {
        const qreal scale = pixelsPerPoint(m_size, picture).x;
        for (const QRect& part : MarkOutline::covered(*m_scene.outlinedMark, scale))
            touched += pixelRect(part, m_size, picture);
    }
    return touched;
}

// On a small picture of its own: what a line costs depends on the picture and not on the clip.
void CanvasPainter::paintLines(QPainter& painter, const QRect& part, const Annotation* current,
                               const std::optional<MarkOutline>& outline)
{
    QImage picture = m_marked.part(part);
    if (current && !isArea(*current))
        MarkedPart(picture, m_size, image().size(), part).draw(*current);
    if (outline) {
        const PixelsPerPoint ratio = pixelsPerPoint(m_size, image().size());
        QPainter above(&picture);
        above.setRenderHint(QPainter::Antialiasing);
        above.translate(-part.topLeft());
        above.scale(ratio.x, ratio.y);
        outline->paint(above, {part.x() / ratio.x, part.y() / ratio.y, part.width() / ratio.x,
                               part.height() / ratio.y});
    }
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(part.topLeft(), picture);
}

// Dashes around a whole screen and text take longer than a move of the pointer should, even where
// nothing of them is exposed.
void CanvasPainter::paintSelection(QPainter& painter, const QRegion& exposed) const
{
    const QRectF& selection = m_scene.selection;
    const QSize size = pixels(selection).size();
    const qreal scale = pixelsPerPoint(m_size, image().size()).x;
    if (!(exposed & SelectionFrame::covered(selection, scale)).isEmpty()) {
        SelectionFrame::paintBorder(painter, selection);
        if (m_scene.handles == CanvasScene::Handles::shown)
            SelectionFrame::paintHandles(painter, selection);
    }
    if (!(exposed & around(SizeLabel::rect(selection, size))).isEmpty())
        SizeLabel::paint(painter, selection, size);
}

} // namespace brindlecam
