#pragma once

namespace brindlecam {

/// Remembers what the user was working in before a session and gives it the focus back. Main
/// thread.
class FrontApplication {
public:
    virtual ~FrontApplication() = default;

    /// Takes note of the window and program that have the focus now.
    virtual void remember() = 0;

    /// Gives the focus back to what was remembered and forgets it; nothing when nothing was. Call
    /// it before the session's windows are hidden: keys that were pressed since remember() and are
    /// still held stay with us until they are up, so that the key which ended the session never
    /// reaches the window below.
    virtual void giveBack() = 0;
};

} // namespace brindlecam
