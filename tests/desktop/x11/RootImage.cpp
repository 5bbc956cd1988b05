#include "x11/RootImage.h"

#include "desktop/support/x11/X11Screen.h"
#include "platform/x11/connection/X11.h"
#include "x11/ThisDesktop.h"

namespace brindlecam::test {

QImage rootImage(const QRect& rect)
{
    // Another client looks: not before the server has seen to what this one has asked for.
    const x11::Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
    return desktop::X11Screen(display()).grab(rect);
}

} // namespace brindlecam::test
