#pragma once

namespace brindlecam {

/// What a room above has over the screen, and takes off it when a capture begins. Main thread.
class ScreenCover {
public:
    virtual ~ScreenCover() = default;

    /// What becomes of the keyboard that it may have.
    enum class Focus {
        goesBack, ///< to whoever had it before
        isTaken,  ///< whoever comes next takes it, and gives it back in the end
    };
    /// Takes everything off the screen at once. Whether anything was there.
    virtual bool leave(Focus focus) = 0;
};

} // namespace brindlecam
