#pragma once

#include "desktop/support/ClientWindow.h"

namespace brindlecam::desktop {

/// What a person asks of the window manager, by its bars, keys and switchers. Calls return once it
/// has been asked, not when it has done so.
class Pager {
public:
    Pager() = default;
    virtual ~Pager() = default;
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;

    virtual void activate(WindowId window) = 0;
    virtual void iconify(WindowId window) = 0;
    virtual void setFullScreen(WindowId window, bool fullScreen) = 0;
    /// Moves a window there, in native pixels; its size stays.
    virtual void move(WindowId window, QPoint pixel) = 0;
    /// Gives a window the keyboard behind the window manager's back, as some of them do.
    virtual void focus(WindowId window) = 0;

    /// Desktops are counted from 0.
    virtual void setDesktopCount(int count) = 0;
    virtual void goToDesktop(int number) = 0;
    virtual void sendToDesktop(WindowId window, int number) = 0;
    [[nodiscard]] virtual int currentDesktop() const = 0;
};

} // namespace brindlecam::desktop
