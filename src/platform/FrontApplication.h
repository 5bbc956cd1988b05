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
    /// it before the session's windows are hidden: the key which ended the session never reaches
    /// the window below, not even its release. Where the system gives a key's release to whatever
    /// has the focus by then, keys that are still held stay with us until they are up.
    virtual void giveBack() = 0;
};

} // namespace brindlecam
