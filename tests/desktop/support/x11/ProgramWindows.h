#pragma once

#include "desktop/support/x11/Connection.h"

#include <QRect>
#include <QString>

#include <vector>

namespace brindlecam::desktop {

/// A window as any client sees it. Native pixels of the whole screen.
struct SeenWindow {
    xcb_window_t id = 0;
    QRect pixels;
    QByteArray type; ///< first name of its kinds, as in "_NET_WM_WINDOW_TYPE_DOCK"
    bool managed = true;
};

/// Looks for the windows of one process: which of them can be seen, and who has the keyboard.
class ProgramWindows final {
public:
    explicit ProgramWindows(const QString& display);

    /// All windows of the process that can be seen, those inside other programs' windows too.
    [[nodiscard]] std::vector<SeenWindow> shown(qint64 pid) const;
    /// Those of one kind, as in "_NET_WM_WINDOW_TYPE_DOCK".
    [[nodiscard]] std::vector<SeenWindow> shown(qint64 pid, const QByteArray& type) const;
    /// Whether the process has a window of its own that covers these pixels, shown or not.
    [[nodiscard]] bool exists(qint64 pid, const QRect& pixels) const;
    /// The window with the keyboard focus; 0 or 1 (the root or the pointer's) when none has it.
    [[nodiscard]] xcb_window_t focused() const;
    /// Whether the focused window belongs to the process.
    [[nodiscard]] bool hasKeyboard(qint64 pid) const;

private:
    void collect(xcb_window_t parent, qint64 pid, std::vector<SeenWindow>& found) const;
    [[nodiscard]] bool belongsTo(xcb_window_t window, qint64 pid) const;
    [[nodiscard]] QRect place(xcb_window_t window) const;

    Connection m_connection;
};

} // namespace brindlecam::desktop
