#include "canvas/MarkedPicture.h"

#include "base/Geometry.h"
#include "pictures/Crop.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

constexpr int kSquarePixels = 64;

QRect touchedPixels(const Annotation& mark, QSizeF canvas, QSize picture)
{
    return pixelRect(mark.paintedBounds(), canvas, picture);
}

/// Draws the marks that touch `part` (pixels).
void drawMarks(QPainter& painter, const AnnotationList::Marks& marks, QSizeF canvas, QSize picture,
               const QRegion& part)
{
    const PixelsPerPoint ratio = pixelsPerPoint(canvas, picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(ratio.x, ratio.y);
    for (const AnnotationList::Mark& mark : marks) {
        if (part.intersects(touchedPixels(*mark, canvas, picture)))
            mark->draw(painter);
    }
}

} // namespace

MarkedPicture::MarkedPicture(QImage frozen, QSizeF canvas)
    : m_frozen(std::move(frozen))
    , m_canvas(canvas)
    , m_grid((m_frozen.width() + kSquarePixels - 1) / kSquarePixels,
             (m_frozen.height() + kSquarePixels - 1) / kSquarePixels)
    , m_covered(static_cast<std::size_t>(m_grid.width()) *
                static_cast<std::size_t>(m_grid.height()))
    , m_isStale(m_covered.size())
{
}

QRect MarkedPicture::squares(const Annotation& mark) const
{
    const QRect touched =
        touchedPixels(mark, m_canvas, m_frozen.size()).intersected(m_frozen.rect());
    if (touched.isEmpty())
        return {};
    // QPoint's own division rounds to the nearest.
    return {QPoint(touched.left() / kSquarePixels, touched.top() / kSquarePixels),
            QPoint(touched.right() / kSquarePixels, touched.bottom() / kSquarePixels)};
}

std::size_t MarkedPicture::index(int column, int row) const
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_grid.width()) +
           static_cast<std::size_t>(column);
}

QRect MarkedPicture::pixels(int column, int row) const
{
    return QRect(column * kSquarePixels, row * kSquarePixels, kSquarePixels, kSquarePixels)
        .intersected(m_frozen.rect());
}

QRegion MarkedPicture::setMarks(const AnnotationList::Marks& marks)
{
    QRegion damage;
    const auto count = [&](const AnnotationList::Mark& mark, int change) {
        const QRect area = squares(*mark);
        for (int row = area.top(); row <= area.bottom(); ++row) {
            for (int column = area.left(); column <= area.right(); ++column) {
                m_covered[index(column, row)] += change;
                m_isStale[index(column, row)] = true;
            }
        }
        if (!area.isEmpty())
            damage += QRect(area.topLeft() * kSquarePixels, area.size() * kSquarePixels);
    };
    const auto [oldFrom, newFrom] =
        std::mismatch(m_marks.begin(), m_marks.end(), marks.begin(), marks.end());
    const auto [oldEnd, newEnd] =
        std::mismatch(m_marks.rbegin(), std::make_reverse_iterator(oldFrom), marks.rbegin(),
                      std::make_reverse_iterator(newFrom));
    std::for_each(oldFrom, oldEnd.base(), [&](const auto& mark) { count(mark, -1); });
    std::for_each(newFrom, newEnd.base(), [&](const auto& mark) { count(mark, 1); });
    m_marks = marks;
    return damage & m_frozen.rect();
}

void MarkedPicture::paint(QPainter& painter, const QRegion& exposed)
{
    const QRect around = exposed.boundingRect() & m_frozen.rect();
    if (around.isEmpty())
        return;
    QRegion shown;
    QRegion stale;
    for (int row = around.top() / kSquarePixels; row <= around.bottom() / kSquarePixels; ++row) {
        for (int column = around.left() / kSquarePixels; column <= around.right() / kSquarePixels;
             ++column) {
            const std::size_t square = index(column, row);
            const QRect part = pixels(column, row);
            if (m_covered[square] == 0 || !exposed.intersects(part))
                continue;
            shown += part;
            if (m_isStale[square])
                stale += part;
            m_isStale[square] = false;
        }
    }
    if (!stale.isEmpty())
        render(stale);

    painter.save();
    // The painter counts in points; one pixel of the picture is one pixel of the screen.
    const PixelsPerPoint ratio = pixelsPerPoint(m_canvas, m_frozen.size());
    painter.scale(1 / ratio.x, 1 / ratio.y);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& rect : shown& exposed)
        painter.drawImage(rect.topLeft(), m_painted, rect);
    painter.restore();
}

void MarkedPicture::render(const QRegion& stale)
{
    // Left as it comes from the system: what is never written takes no memory.
    if (m_painted.isNull())
        m_painted = QImage(m_frozen.size(), m_frozen.format());
    QPainter painter(&m_painted);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& rect : stale)
        painter.drawImage(rect.topLeft(), m_frozen, rect);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setClipRegion(stale);
    drawMarks(painter, m_marks, m_canvas, m_frozen.size(), stale);
}

QImage flattened(const QImage& frozen, QSizeF canvas, const QRect& pixels,
                 const AnnotationList::Marks& marks)
{
    const QRect part = pixels.intersected(frozen.rect());
    const QImage view = croppedView(frozen, part);
    const bool touched = std::any_of(marks.begin(), marks.end(), [&](const auto& mark) {
        return touchedPixels(*mark, canvas, frozen.size()).intersects(part);
    });
    if (view.isNull() || !touched)
        return view;
    // As large as the screen, so that every mark is drawn at the place where it is shown; elsewhere
    // it would come out a little different. What is not written takes no memory.
    QImage whole(frozen.size(), frozen.format());
    QPainter painter(&whole);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(part.topLeft(), frozen, part);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setClipRect(part);
    drawMarks(painter, marks, canvas, frozen.size(), part);
    painter.end();
    return croppedView(whole, part);
}

} // namespace brindlecam
