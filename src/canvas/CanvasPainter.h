#pragma once

#include "canvas/AnnotationList.h"
#include "canvas/CanvasScene.h"
#include "canvas/DimView.h"
#include "canvas/MarkedPicture.h"

#include <QImage>
#include <QRegion>
#include <QSize>
#include <QSizeF>

#include <optional>
#include <vector>

class QPainter;

namespace brindlecam {

class Annotation;
class HintPicture;
class MarkOutline;

/// Paints a canvas, and knows what a change makes stale, so that only that is painted. Points of
/// the canvas; the frozen pictures are pixels.
class CanvasPainter final {
public:
    CanvasPainter(const QImage& image, QSizeF size);

    /// The frozen screen, in pixels.
    [[nodiscard]] const QImage& image() const { return m_dimView.image(); }

    /// What is shown now.
    [[nodiscard]] const CanvasScene& scene() const { return m_scene; }

    /// A painted hint that outlives this; without one the hint is painted each time.
    void setHintPicture(const HintPicture& picture) { m_hintPicture = &picture; }

    /// Shows another scene from now on; answers what must be painted anew.
    [[nodiscard]] QRegion show(const CanvasScene& scene);
    /// What is not as in a frame of the dimmed screen with the hint.
    [[nodiscard]] QRegion differenceToFirstFrame() const;
    /// The same for the finished marks.
    [[nodiscard]] QRegion show(const AnnotationList::Marks& marks);
    /// Whole device pixels around places that have changed.
    [[nodiscard]] QRegion around(const QRectF& changed) const;
    [[nodiscard]] QRegion around(const std::vector<QRectF>& changed) const;

    /// Paints what is inside `exposed`; `current` is the mark being drawn, or null.
    void paint(QPainter& painter, const QRegion& exposed, const Annotation* current);

    /// The picture's pixels that a selection takes.
    [[nodiscard]] QRect pixels(const QRectF& selection) const;

private:
    [[nodiscard]] QRegion difference(const CanvasScene& before, const CanvasScene& after) const;
    void paintMarks(QPainter& painter, const QRegion& exposed, const Annotation* current);
    [[nodiscard]] QRegion lines(const Annotation* current) const;
    void paintLines(QPainter& painter, const QRect& part, const Annotation* current,
                    const std::optional<MarkOutline>& outline);
    void paintSelection(QPainter& painter, const QRegion& exposed) const;

    const QSizeF m_size;
    const HintPicture* m_hintPicture = nullptr;
    DimView m_dimView;
    MarkedPicture m_marked;
    CanvasScene m_scene;
};

} // namespace brindlecam
