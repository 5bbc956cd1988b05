#pragma once

#include "desktop/support/ClientWindow.h"

#include <QRect>
#include <QString>

#include <vector>

namespace brindlecam::desktop {

/// What a window of the program is for, as the desktop is told.
enum class Role {
    overlay,
    toast, ///< the countdown is one, too
    dialog,
    pin,
    menu,
    other,
};

/// A window as any other program sees it. Native pixels of the whole screen.
struct SeenWindow {
    WindowId id = 0;
    QRect pixels;
    Role role = Role::other;
    QString title{};
    qint64 pid = 0; ///< whose it claims to be; 0 when it does not tell
    bool managed = true;
    bool shaped = false;      ///< it ends before its rectangle does
    bool translucent = false; ///< what lies beneath may shine through
};

/// What is on the screen, window by window.
class Windows {
public:
    Windows() = default;
    virtual ~Windows() = default;
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;

    /// All windows of the process that can be seen, the lowest first, those inside other programs'
    /// windows too.
    [[nodiscard]] virtual std::vector<SeenWindow> shown(qint64 pid) const = 0;
    [[nodiscard]] std::vector<SeenWindow> shown(qint64 pid, Role role) const;
    /// Every window that lies directly on the desktop and is shown, the lowest first, whoever's: an
    /// unmanaged one, or a window manager's frame.
    [[nodiscard]] virtual std::vector<SeenWindow> all() const = 0;
    /// Whether the process has a window of its own that covers these pixels, shown or not.
    [[nodiscard]] virtual bool exists(qint64 pid, const QRect& pixels) const = 0;
    /// The window with the keyboard focus; none of anybody's when no window has it.
    [[nodiscard]] virtual WindowId focused() const = 0;
    /// Whether the focused window belongs to the process.
    [[nodiscard]] virtual bool hasKeyboard(qint64 pid) const = 0;
    /// The window that the window manager treats as the active one; 0 for none.
    [[nodiscard]] virtual WindowId active() const = 0;
};

} // namespace brindlecam::desktop
