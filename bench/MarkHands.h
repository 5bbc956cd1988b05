#pragma once

#include "Stage.h"

#include "base/Tool.h"

#include <cstdint>
#include <optional>

namespace brindlecam::bench {

/// The user of a canvas: selects the whole screen, takes tools with the keyboard and draws with the
/// mouse. Native pixels, on a stage of one pixel per point. Buttons are reached by their order, and
/// not by their names as in the desktop tests: who asks for names has the program speak to
/// assistive technology, and a session with 200 strokes then takes it half as much processor time
/// again.
class MarkHands final {
public:
    explicit MarkHands(Stage& stage);

    /// What the actions bar offers; the value is the button's place in it.
    enum class Action : std::uint8_t { text, pin, scroll };

    /// Opens an overlay and selects the whole screen; returns when nothing moves any more.
    void selectScreen();
    /// The same with a part of the screen.
    void select(const QRect& area);
    /// Goes to a button of the actions bar with the keyboard, once per session and before any tool
    /// is taken, and strikes it. Returns the moment just before the strike was sent.
    Clock::time_point choose(Action action);
    /// Takes a tool, or the pointer, after selectScreen() or a drag.
    void take(std::optional<Tool> tool);
    /// One drag, or a click when both places are the same.
    void drag(QPoint from, QPoint to);
    /// Marks of every tool that is drawn with the mouse, all over the canvas but for the strip that
    /// freeStrip() names; always the same ones. Returns when nothing moves any more.
    void drawMany(int count);
    void undo();
    void redo();
    /// Waits until the program has nothing left to do and nothing is drawn; answers what is shown.
    QImage rest();

    /// Where drawMany() leaves room at the left for whatever lies below its marks.
    [[nodiscard]] QRect freeStrip() const;

private:
    Stage& m_stage;
    std::optional<Tool> m_taken;
};

} // namespace brindlecam::bench
