#pragma once

namespace brindlecam {

/// What is under way. Each room sets what is its own; everybody may ask. Main thread.
class Activity final {
public:
    /// The life of the program: the shell's.
    enum class Stage {
        running,
        quitting, ///< nothing new begins, and what has begun goes on to its end
        left,     ///< that is done
    };

    bool capture = false;       ///< an area or full-screen capture, from trigger to result
    bool scrollCapture = false; ///< a scrolled page is being stitched
    bool recording = false;     ///< a GIF is being recorded
    Stage stage = Stage::running;

    [[nodiscard]] bool any() const { return capture || scrollCapture || recording; }
    /// Whether the program is about to end, or has.
    [[nodiscard]] bool quitting() const { return stage != Stage::running; }
};

} // namespace brindlecam
