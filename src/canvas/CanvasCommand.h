#pragma once

#include <QPointF>

#include <optional>

class QKeyEvent;

namespace brindlecam {

/// What a key asks of the canvas.
struct CanvasCommand {
    enum class Kind {
        copy,
        save,
        cancel,
        undo,
        redo,
        deleteAnnotation,
        move,         ///< the selected mark, else the selection
        moveFarEdges, ///< the selection's right and lower edges
    };
    Kind kind = Kind::cancel;
    QPointF by; ///< of the two moves, in points

    bool operator==(const CanvasCommand&) const = default;

    /// Letters count whatever Shift or Caps Lock make of them, and by their place on keyboards of
    /// another script. None: the key means nothing here.
    [[nodiscard]] static std::optional<CanvasCommand> of(const QKeyEvent& event);
    /// Whether it counts when a held key repeats itself.
    [[nodiscard]] bool repeats() const { return kind == Kind::move || kind == Kind::moveFarEdges; }
};

} // namespace brindlecam
