#pragma once

namespace brindlecam {

/// What is under way. Rooms above the shell set their own flag; everybody may ask. Main thread.
class Activity final {
public:
    bool capture = false;       ///< an area or full-screen capture, from trigger to result
    bool scrollCapture = false; ///< a scrolled page is being stitched
    bool recording = false;     ///< a GIF is being recorded

    [[nodiscard]] bool any() const { return capture || scrollCapture || recording; }
};

} // namespace brindlecam
