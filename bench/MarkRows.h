#pragma once

#include "MarkHands.h"

namespace brindlecam::bench {

class Figures;

/// What drawing feels like: from a pointer's move to what it changes on a canvas full of marks, and
/// from the end of a selection to the bars around it.
class MarkRows final {
public:
    MarkRows(Stage& stage, Figures& figures);

    /// Each in a session of its own.
    void moves();
    void bars();
    void longStroke();
    void manyMarks();

private:
    /// One drag that is measured move by move.
    struct Path {
        QPoint press;
        QPoint first; ///< to where it goes before anything is measured
        QPoint step;
    };

    [[nodiscard]] bool isLarge() const { return m_stage.pixels().width() >= 3840; }
    [[nodiscard]] double moveLimit() const { return isLarge() ? 8 : 4; }
    /// A part of the screen's width and height.
    [[nodiscard]] QPoint at(double x, double y) const;
    void beginDrag(const Path& path);
    /// Takes the drag back and looks at it move by move.
    [[nodiscard]] std::vector<std::vector<Sample>> rehearsed(const Path& path);
    void measureDrag(const QString& what, const Path& path);
    void measureMoves(const QString& what, const Path& path,
                      const std::vector<std::vector<Sample>>& changed);
    void measureHover(const QString& what);
    void measureUndo(const QString& what);

    Stage& m_stage;
    Figures& m_figures;
    MarkHands m_user;
};

} // namespace brindlecam::bench
