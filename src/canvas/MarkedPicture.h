#pragma once

#include "canvas/AnnotationList.h"

#include <QImage>
#include <QRegion>

#include <vector>

class QPainter;

namespace brindlecam {

/// The frozen screen with the finished marks painted in, kept so that showing it costs a copy
/// however many marks there are. Painted where it is shown, strip by strip; memory is taken only
/// where marks are. Pixels of the frozen picture, origin top-left. Main thread.
class MarkedPicture final {
public:
    /// `frozen` has 32 bits per pixel; `canvas` is its size in points.
    MarkedPicture(QImage frozen, QSizeF canvas);

    /// Shows these marks from now on. The answer is where something may look different now, in
    /// pixels: what came, went or changed, without most of what a long line passes by.
    QRegion setMarks(const AnnotationList::Marks& marks);

    /// Paints what lies in `exposed` (pixels) and near marks, pixel by pixel, with a painter that
    /// counts in points. Elsewhere it paints nothing: the frozen picture is expected there.
    void paint(QPainter& painter, const QRegion& exposed);

    /// A copy of what paint() shows in `rect` (pixels, inside the picture), with the frozen picture
    /// where no marks are.
    [[nodiscard]] QImage part(const QRect& rect);

private:
    struct PaintedMark {
        const Annotation* mark;
        std::vector<QRect> touched;
    };

    [[nodiscard]] std::vector<QRect> touched(const Annotation& mark) const;
    [[nodiscard]] std::vector<std::size_t> squares(const std::vector<QRect>& rects) const;
    [[nodiscard]] std::size_t index(int column, int row) const;
    [[nodiscard]] QRect pixels(std::size_t square) const;
    void add(const Annotation& mark, QRegion& damage);
    void remove(const Annotation& mark, QRegion& damage);
    [[nodiscard]] QRegion marked(const QRegion& exposed) const;
    void drawOnTop(const AnnotationList::Marks& added, const QRegion& damage);
    void refresh(const QRegion& shown);
    [[nodiscard]] QRegion grown(const QRegion& region) const;
    [[nodiscard]] QImage paintedPart(const QRect& rect);
    [[nodiscard]] std::vector<PaintedMark> marksIn(const QRegion& region) const;
    void render(const QRegion& stale);
    void render(const QRect& rect, const std::vector<PaintedMark>& marks);

    QImage m_frozen;
    QSizeF m_canvas;
    QSize m_grid; ///< columns and rows of squares
    AnnotationList::Marks m_marks;
    QImage m_painted;           ///< valid in squares that marks touch, but for what is stale
    std::vector<int> m_covered; ///< per square: how many marks touch it
    QRegion m_stale;            ///< pixels not painted since their marks changed
};

/// A copy of the part of `frozen` inside `pixels` (clipped to it) with the marks drawn on it; where
/// no mark touches it, the part itself without a copy. The same pixels as MarkedPicture shows.
/// `canvas` is the size of `frozen` in points. On any thread; null when nothing is left.
[[nodiscard]] QImage flattened(const QImage& frozen, QSizeF canvas, const QRect& pixels,
                               const AnnotationList::Marks& marks);

/// A copy of `below`, which is the part `part` (pixels) of a picture of this size, with marks drawn
/// on top of it. On any thread.
[[nodiscard]] QImage flattenedOver(const QImage& below, QSizeF canvas, QSize picture,
                                   const QRect& part, const AnnotationList::Marks& marks);

} // namespace brindlecam
