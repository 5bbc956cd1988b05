#pragma once

#include "platform/Panels.h"

#include <Qt>

namespace brindlecam::x11 {

/// What a panel role means on X11.
struct PanelTraits {
    Qt::WindowFlags flags{}; ///< where it is framed: beside its own, which say what buttons it has
    const char* type = "";   ///< name of the window type's atom
    bool framed = false;     ///< a window like any other: minimised, moved to other desktops
    bool managed = false;    ///< by the window manager
    bool blends = false;     ///< may have transparent parts
    bool activates = false;  ///< takes the focus when shown
    bool insists = false;    ///< and when pressed, and takes it back if it is lost at once
    bool keepsPlace = false; ///< nobody but show() moves it
    bool everywhere = false; ///< above others on every desktop, in no list of windows

    [[nodiscard]] static PanelTraits of(PanelRole role);
    /// A window manager has it for as long as no full-screen window lies above it.
    [[nodiscard]] static PanelTraits ofPin(bool blends);
};

} // namespace brindlecam::x11
