#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

namespace brindlecam {

class CanvasModel;

/// What a canvas shows over the frozen screen besides the marks; two scenes tell what must be
/// painted anew. Points of the canvas.
struct CanvasScene {
    enum class Handles { hidden, shown };

    QRectF hole; ///< what is not dimmed
    QRectF selection;
    Handles handles = Handles::shown;
    std::optional<QRectF> outlinedWindow;
    std::optional<QRectF> outlinedMark;
    std::optional<QPointF> loupePointer;
    bool hint = false;

    /// `loupePointer` is where the loupe looks when there is one; none: nobody wants one.
    [[nodiscard]] static CanvasScene of(const CanvasModel& model,
                                        const std::optional<QPointF>& loupePointer);
};

} // namespace brindlecam
