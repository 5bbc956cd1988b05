#pragma once

#include "platform/Panels.h"

#include <Qt>

namespace brindlecam::x11 {

/// What a panel role means on X11.
struct PanelTraits {
    Qt::WindowFlags flags;   ///< dialogs: beside their own, which say what buttons they have
    const char* type = "";   ///< name of the window type's atom
    bool managed = false;    ///< by the window manager
    bool blends = false;     ///< may have transparent parts
    bool activates = false;  ///< takes the focus when shown
    bool keepsPlace = false; ///< nobody but show() moves it

    [[nodiscard]] static PanelTraits of(PanelRole role);
};

} // namespace brindlecam::x11
