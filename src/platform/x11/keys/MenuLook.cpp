#include "platform/x11/keys/MenuLook.h"

namespace brindlecam::x11 {

// GTK, Chromium, openbox and Qt's menu bars name a kind of menu; openbox's menus do not even
// override. Qt's context menus and combo boxes are ordinary windows by type, but override and
// belong to one that does not. A menu that was torn off is managed: it is open for good and keeps
// no grab.
MenuLook::Likeness MenuLook::likeness() const
{
    if (managed)
        return Likeness::none;
    if (type == Type::menu)
        return Likeness::certain;
    if (type == Type::normal && overrideRedirect && transient && !fillsScreen)
        return Likeness::likely;
    return Likeness::none;
}

} // namespace brindlecam::x11
