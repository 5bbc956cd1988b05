#pragma once

#include "canvas/Annotation.h"

#include <memory>
#include <vector>

namespace brindlecam {

/// The finished marks of a canvas, bottom to top, with undo and redo without limit. Finished marks
/// never change: a changed one takes the place of its original, so that every earlier state is just
/// a list of pointers. Main thread; the marks themselves may be shared with others.
class AnnotationList final {
public:
    using Mark = std::shared_ptr<const Annotation>;
    using Marks = std::vector<Mark>;

    [[nodiscard]] const Marks& marks() const { return m_marks; }
    [[nodiscard]] bool isEmpty() const { return m_marks.empty(); }

    /// Remembers the present state as one to go back to, before it is changed. What was undone can
    /// no longer be redone.
    void checkpoint();
    /// Adds a mark on top, as a step of its own.
    Mark append(Annotation mark);
    /// Puts `changed` in the place of `old`. No step of its own: a drag takes one checkpoint first.
    /// The answer stands for the mark from now on; null when `old` is not among the marks.
    Mark replace(const Mark& old, Annotation changed);
    /// Takes this very mark away, as a step of its own. False when it is not among the marks.
    bool remove(const Mark& mark);

    /// Goes back one step; false when there is none.
    bool undo();
    /// Takes back an undo; false when there is none.
    bool redo();
    [[nodiscard]] bool canUndo() const { return !m_earlier.empty(); }
    [[nodiscard]] bool canRedo() const { return !m_later.empty(); }
    /// No marks and no steps.
    void clear();

    /// What the next step badge of this colour shows: one more than the highest there is.
    [[nodiscard]] int nextNumber(const QColor& color) const;
    /// The topmost mark that a press here touches (points), or null.
    [[nodiscard]] Mark topmostAt(QPointF point) const;

private:
    Marks m_marks;
    std::vector<Marks> m_earlier; ///< states to go back to, the latest last
    std::vector<Marks> m_later;   ///< states undone, the latest last
};

} // namespace brindlecam
