#pragma once

#include <QString>

namespace brindlecam::desktop {

class X11ClientWindow;

} // namespace brindlecam::desktop

namespace brindlecam::test {

// The desktop that a test in process runs on, for what the harness tells others.

/// For the harness' classes that speak to a server.
[[nodiscard]] QString display();
/// Gives another program's window the focus: through the window manager when there is one.
void activate(desktop::X11ClientWindow& window);
/// Lets the event loop run until what the server has to say has been handled.
void settle();

} // namespace brindlecam::test
