#pragma once

#include "base/Geometry.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <array>
#include <optional>
#include <variant>
#include <vector>

namespace brindlecam {

/// A side or corner of the selection: −1 the left or top edge, 1 the right or bottom edge, 0 the
/// middle.
struct Handle {
    int dx = 0;
    int dy = 0;

    bool operator==(const Handle&) const = default;
};

/// The eight handles in the order in which they are tried: from left to right, and from the lower
/// edge up.
inline constexpr std::array kHandles{Handle{-1, 1}, Handle{-1, 0}, Handle{-1, -1}, Handle{0, 1},
                                     Handle{0, -1}, Handle{1, 1},  Handle{1, 0},   Handle{1, -1}};

/// What the present mouse drag does, to the selection or to a mark on it.
namespace drag {
struct None {
    bool operator==(const None&) const = default;
};
struct Selecting {
    QPointF anchor;
    bool operator==(const Selecting&) const = default;
};
struct Moving {
    QPointF last;
    bool operator==(const Moving&) const = default;
};
struct Resizing {
    Handle handle;
    QRectF original;
    std::optional<QSizeF> least; ///< where the edges stop; none: they pass each other
    bool operator==(const Resizing&) const = default;
};
struct MovingAnnotation {
    QPointF last;
    bool checkpointed = false; ///< the step back was noted; not before something moves
    bool operator==(const MovingAnnotation&) const = default;
};
struct Drawing {
    bool operator==(const Drawing&) const = default;
};
} // namespace drag
using Drag = std::variant<drag::None, drag::Selecting, drag::Moving, drag::Resizing,
                          drag::MovingAnnotation, drag::Drawing>;

/// The chosen area of one screen as a pure state machine: hovering windows, dragging an area out,
/// clicking a window, moving and resizing. Points of the canvas, origin top-left, y down; every
/// place handed in is clamped to the canvas. What is dragged out lies on whole points, what is
/// taken of a window or moved by the mouse on whole pixels, so that it keeps its size.
class Selection final {
public:
    /// What a press came upon.
    enum class Press {
        selecting, ///< a new selection has begun
        resizing,  ///< a handle was taken
        inside,    ///< inside the selection: the caller decides which drag begins
        ignored,   ///< outside, and marks would be lost
    };

    /// Whether there are marks that a new selection would lose.
    enum class Drawn { nothing, something };

    explicit Selection(QSizeF canvas, PixelsPerPoint ratio = {});

    /// Windows of this screen that a click may take, frontmost first.
    void setWindows(std::vector<QRectF> windows);

    /// The selected area; empty when nothing is selected.
    [[nodiscard]] const QRectF& rect() const { return m_rect; }
    [[nodiscard]] bool isEmpty() const { return m_rect.isEmpty(); }
    /// The same as it would be if the drag ended here.
    [[nodiscard]] QRectF settled() const;
    [[nodiscard]] const std::optional<QRectF>& hoveredWindow() const { return m_hoveredWindow; }
    [[nodiscard]] const Drag& drag() const { return m_drag; }
    [[nodiscard]] bool isDragging() const { return !std::holds_alternative<drag::None>(m_drag); }
    /// Whether the drag changes the selection itself.
    [[nodiscard]] bool isChanging() const;
    /// What is shown undimmed: the selection, else the hovered window, else nothing.
    [[nodiscard]] QRectF hole() const;
    [[nodiscard]] QRectF canvas() const { return {QPointF(), m_canvas}; }

    /// The first handle whose centre is within 7 points of the place on both axes.
    [[nodiscard]] std::optional<Handle> handleAt(QPointF point) const;
    /// Centre of a handle of a selection.
    [[nodiscard]] static QPointF centre(Handle handle, const QRectF& selection);

    void hover(QPointF point);
    /// The pointer has left the screen.
    void leave();
    [[nodiscard]] Press press(QPointF point, Drawn drawn);
    void startMoving(QPointF point);
    void startMovingAnnotation(QPointF point);
    void startDrawing();
    /// Drags of marks leave the selection alone.
    void dragTo(QPointF point);
    /// Notes that the mark being moved follows the pointer to this place, and answers by how much
    /// it moves and whether the step back is still to be noted. None when no mark is being moved.
    struct AnnotationMove {
        QPointF by;
        bool first = false;
    };
    std::optional<AnnotationMove> moveAnnotationTo(QPointF point);
    /// Ends the drag: edges that it moved lie on whole points inside the canvas; under 3 points it
    /// was a click, which takes the hovered window or nothing. With nothing selected the window
    /// under the pointer is hovered at once.
    void release();
    /// Moves the selection, as far as the canvas goes. Nothing while nothing is selected.
    void moveBy(QPointF by);
    /// Moves its right and lower edges, as far as the canvas goes and never below 3 points.
    void moveFarEdges(QPointF by);
    void clear();

private:
    void startSelecting(QPointF point);
    [[nodiscard]] QRectF onWholePoints(const QRectF& rect) const;
    [[nodiscard]] QRectF onWholePoints(const drag::Resizing& drag) const;
    [[nodiscard]] QPointF wayInside(QPointF from, QPointF to) const;

    QSizeF m_canvas;
    PixelsPerPoint m_ratio;
    std::vector<QRectF> m_windows;
    QRectF m_rect;
    std::optional<QRectF> m_hoveredWindow;
    QPointF m_pointer; ///< where it was last pressed or dragged to
    Drag m_drag;
};

} // namespace brindlecam
