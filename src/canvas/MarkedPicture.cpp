#include "canvas/MarkedPicture.h"

#include "base/Geometry.h"
#include "canvas/MarkedPart.h"
#include "pictures/Crop.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

constexpr int kSquarePixels = 64;
constexpr int kGrainPixels = 16;  ///< what is painted anew ends at multiples of it
constexpr int kTallestPart = 128; ///< pixels

QRect touchedPixels(const Annotation& mark, QSizeF canvas, QSize picture)
{
    return pixelRect(mark.paintedBounds(), canvas, picture);
}

/// The rectangles of a region, cut where they are too high: a line costs as much as the picture
/// lets it be high, however little of it is to be seen.
std::vector<QRect> partsOf(const QRegion& region)
{
    std::vector<QRect> parts;
    for (const QRect& rect : region) {
        for (int top = rect.top(); top <= rect.bottom(); top += kTallestPart)
            parts.push_back(QRect(rect.left(), top, rect.width(), kTallestPart) & rect);
    }
    return parts;
}

void drawMarks(QImage& target, const AnnotationList::Marks& marks, QSizeF canvas, QSize picture,
               const QRect& part)
{
    MarkedPart marked(target, canvas, picture, part);
    for (const AnnotationList::Mark& mark : marks)
        marked.draw(*mark);
}

} // namespace

MarkedPicture::MarkedPicture(QImage frozen, QSizeF canvas)
    : m_frozen(std::move(frozen))
    , m_canvas(canvas)
    , m_grid((m_frozen.width() + kSquarePixels - 1) / kSquarePixels,
             (m_frozen.height() + kSquarePixels - 1) / kSquarePixels)
    , m_covered(static_cast<std::size_t>(m_grid.width()) *
                static_cast<std::size_t>(m_grid.height()))
{
}

std::vector<QRect> MarkedPicture::touched(const Annotation& mark) const
{
    std::vector<QRect> rects;
    for (const QRectF& part : mark.paintedParts()) {
        const QRect rect = pixelRect(part, m_canvas, m_frozen.size()) & m_frozen.rect();
        if (!rect.isEmpty())
            rects.push_back(rect);
    }
    return rects;
}

std::vector<std::size_t> MarkedPicture::squares(const std::vector<QRect>& rects) const
{
    std::vector<std::size_t> touched;
    for (const QRect& rect : rects) {
        for (int row = rect.top() / kSquarePixels; row <= rect.bottom() / kSquarePixels; ++row) {
            for (int column = rect.left() / kSquarePixels; column <= rect.right() / kSquarePixels;
                 ++column)
                touched.push_back(index(column, row));
        }
    }
    std::ranges::sort(touched);
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
    return touched;
}

std::size_t MarkedPicture::index(int column, int row) const
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_grid.width()) +
           static_cast<std::size_t>(column);
}

QRect MarkedPicture::pixels(std::size_t square) const
{
    const QPoint cell(static_cast<int>(square) % m_grid.width(),
                      static_cast<int>(square) / m_grid.width());
    return QRect(cell * kSquarePixels, QSize(kSquarePixels, kSquarePixels)) & m_frozen.rect();
}

void MarkedPicture::add(const Annotation& mark, QRegion& damage)
{
    const std::vector<QRect> rects = touched(mark);
    for (const std::size_t square : squares(rects)) {
        // Nothing of it was ever painted, or not since its last mark went.
        if (m_covered[square]++ == 0)
            m_stale += pixels(square);
    }
    for (const QRect& rect : rects)
        damage += rect;
}

void MarkedPicture::remove(const Annotation& mark, QRegion& damage)
{
    const std::vector<QRect> rects = touched(mark);
    for (const std::size_t square : squares(rects))
        --m_covered[square];
    for (const QRect& rect : rects)
        damage += rect;
}

QRegion MarkedPicture::setMarks(const AnnotationList::Marks& marks)
{
    if (marks == m_marks)
        return {};
    QRegion damage;
    const auto [oldFrom, newFrom] =
        std::mismatch(m_marks.begin(), m_marks.end(), marks.begin(), marks.end());
    const auto [oldEnd, newEnd] =
        std::mismatch(m_marks.rbegin(), std::make_reverse_iterator(oldFrom), marks.rbegin(),
                      std::make_reverse_iterator(newFrom));
    // First what comes, so that squares which only a moved mark touches stay painted.
    std::for_each(newFrom, newEnd.base(), [&](const auto& mark) { add(*mark, damage); });
    std::for_each(oldFrom, oldEnd.base(), [&](const auto& mark) { remove(*mark, damage); });
    if (oldFrom == m_marks.end())
        drawOnTop({newFrom, marks.end()}, damage);
    else
        m_stale += damage;
    m_marks = marks;
    return damage;
}

// Where everything below is painted, marks that come on top need nothing of it anew.
void MarkedPicture::drawOnTop(const AnnotationList::Marks& added, const QRegion& damage)
{
    const QRegion touched = grown(damage);
    const QRegion painted = touched - grown(m_stale & touched);
    m_stale += damage - painted;
    for (const QRect& rect : partsOf(painted)) {
        QImage part = paintedPart(rect);
        drawMarks(part, added, m_canvas, m_frozen.size(), rect);
    }
}

QRegion MarkedPicture::marked(const QRegion& exposed) const
{
    const QRect around = exposed.boundingRect() & m_frozen.rect();
    if (around.isEmpty())
        return {};
    QRegion covered;
    for (int row = around.top() / kSquarePixels; row <= around.bottom() / kSquarePixels; ++row) {
        for (int column = around.left() / kSquarePixels; column <= around.right() / kSquarePixels;
             ++column) {
            const std::size_t square = index(column, row);
            if (m_covered[square] > 0)
                covered += pixels(square);
        }
    }
    return covered & exposed;
}

void MarkedPicture::paint(QPainter& painter, const QRegion& exposed)
{
    const QRegion shown = marked(exposed);
    if (shown.isEmpty())
        return;
    refresh(shown);

    painter.save();
    // The painter counts in points; one pixel of the picture is one pixel of the screen.
    const PixelsPerPoint ratio = pixelsPerPoint(m_canvas, m_frozen.size());
    painter.scale(1 / ratio.x, 1 / ratio.y);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& rect : shown)
        painter.drawImage(rect.topLeft(), m_painted, rect);
    painter.restore();
}

QImage MarkedPicture::part(const QRect& rect)
{
    const QRegion shown = marked(rect);
    refresh(shown);
    QImage copy = m_frozen.copy(rect);
    QPainter painter(&copy);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& each : shown)
        painter.drawImage(each.topLeft() - rect.topLeft(), m_painted, each);
    return copy;
}

void MarkedPicture::refresh(const QRegion& shown)
{
    const QRegion stale = grown(m_stale & shown);
    if (stale.isEmpty())
        return;
    render(stale);
    m_stale -= stale;
}

// Two narrow strips side by side would take twice the time of a wide one.
QRegion MarkedPicture::grown(const QRegion& region) const
{
    QRegion grown;
    for (const QRect& rect : region) {
        const QPoint first(rect.left() / kGrainPixels, rect.top() / kGrainPixels);
        const QPoint last(rect.right() / kGrainPixels, rect.bottom() / kGrainPixels);
        grown += QRect(first * kGrainPixels, (last + QPoint(1, 1)) * kGrainPixels - QPoint(1, 1));
    }
    return grown & m_frozen.rect();
}

// Each part as a picture of its own: a clip would not make a line cost less.
void MarkedPicture::render(const QRegion& stale)
{
    const std::vector<PaintedMark> marks = marksIn(stale);
    for (const QRect& rect : partsOf(stale))
        render(rect, marks);
}

void MarkedPicture::render(const QRect& rect, const std::vector<PaintedMark>& marks)
{
    QImage part = paintedPart(rect);
    QPainter painter(&part);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPoint(), m_frozen, rect);
    painter.end();
    MarkedPart marked(part, m_canvas, m_frozen.size(), rect);
    for (const PaintedMark& mark : marks) {
        if (std::ranges::any_of(mark.touched,
                                [&](const QRect& touched) { return touched.intersects(rect); }))
            marked.draw(*mark.mark);
    }
}

std::vector<MarkedPicture::PaintedMark> MarkedPicture::marksIn(const QRegion& region) const
{
    const QRect around = region.boundingRect();
    std::vector<PaintedMark> found;
    for (const AnnotationList::Mark& mark : m_marks) {
        if (touchedPixels(*mark, m_canvas, m_frozen.size()).intersects(around))
            found.push_back({mark.get(), touched(*mark)});
    }
    return found;
}

QImage MarkedPicture::paintedPart(const QRect& rect)
{
    // Left as it comes from the system: what is never written takes no memory.
    if (m_painted.isNull())
        m_painted = QImage(m_frozen.size(), m_frozen.format());
    const qsizetype offset =
        rect.top() * m_painted.bytesPerLine() + qsizetype(rect.left()) * m_painted.depth() / 8;
    return {m_painted.bits() + offset, rect.width(), rect.height(), m_painted.bytesPerLine(),
            m_painted.format()};
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
    return flattenedOver(view, canvas, frozen.size(), part, marks);
}

QImage flattenedOver(const QImage& below, QSizeF canvas, QSize picture, const QRect& part,
                     const AnnotationList::Marks& marks)
{
    QImage copy = below.copy();
    drawMarks(copy, marks, canvas, picture, part);
    return copy;
}

} // namespace brindlecam
