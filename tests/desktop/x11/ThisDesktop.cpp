#include "x11/ThisDesktop.h"

#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11Pager.h"
#include "platform/x11/connection/X11.h"

#include <QCoreApplication>
#include <QTest>

namespace brindlecam::test {

QString display()
{
    return qEnvironmentVariable("DISPLAY");
}

void activate(desktop::X11ClientWindow& window)
{
    if (!window.connection().hasWindowManager()) {
        window.takeFocus();
        return;
    }
    // A new window gets the focus by itself. A request that comes on top of that would be answered
    // at a time that nobody can wait for.
    constexpr int kNewWindowMs = 1000;
    if (!QTest::qWaitFor([&] { return window.hasFocus(); }, kNewWindowMs))
        desktop::X11Pager(display()).activate(window.id());
}

void settle()
{
    for (int round = 0; round < 3; ++round) {
        const x11::Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
        QCoreApplication::processEvents();
        QTest::qWait(20);
    }
}

} // namespace brindlecam::test
