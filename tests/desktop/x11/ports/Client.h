#pragma once

#include "desktop/support/x11/Connection.h"
#include "x11/ThisDesktop.h"

#include <QByteArray>
#include <QImage>
#include <QRect>

#include <cstdint>
#include <vector>

namespace brindlecam::test {

struct WindowOptions {
    QRect rect{100, 100, 200, 150}; ///< native pixels; the border lies around this size
    int border = 0;
    bool unmanaged = false; ///< override-redirect
    bool inputOnly = false;
    QByteArray type{}; ///< _NET_WM_WINDOW_TYPE; none when empty
};

/// Another program on the same X server, for what an ordinary one's windows don't have: borders,
/// only input, any property. Every call has taken effect in the server when it returns. Its windows
/// go with it.
class Client final {
public:
    [[nodiscard]] xcb_window_t root() const { return m_connection.root(); }
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const { return m_connection.atom(name); }

    /// A window that is shown; a window manager may still be busy with it.
    [[nodiscard]] xcb_window_t show(const WindowOptions& options);
    void destroy(xcb_window_t window);
    /// Puts a window above its siblings, asking the window manager where there is one.
    void raise(xcb_window_t window);

    void setNumbers(xcb_window_t window, const QByteArray& property,
                    const std::vector<std::uint32_t>& values, xcb_atom_t type = XCB_ATOM_CARDINAL);
    void remove(xcb_window_t window, const QByteArray& property);

    /// Paints the desktop itself; colours must be ones that every depth has.
    void paintDesktop(const QImage& picture);
    /// Gives the desktop a pointer that can be seen.
    void setArrowPointer();

    void takeSelection(const QByteArray& selection, xcb_window_t window);
    void dropSelection(const QByteArray& selection);

    /// The window's rectangle in native pixels as it and all its borders lie on the screen.
    [[nodiscard]] QRect outerRect(xcb_window_t window) const;
    /// The child of the root window that holds this window: itself, or its frame.
    [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;

private:
    desktop::Connection m_connection{display()};
};

} // namespace brindlecam::test
