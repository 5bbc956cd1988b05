#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>

#include <xcb/xcb.h>

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

/// Another program on the same X server: paints, opens windows and speaks to the window manager.
/// Every call has taken effect in the server when it returns. Its windows go with it.
class Client final {
public:
    Client();
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] xcb_connection_t* raw() const { return m_connection; }
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const;

    /// A window that is shown; a window manager may still be busy with it.
    [[nodiscard]] xcb_window_t show(const WindowOptions& options);
    void destroy(xcb_window_t window);
    /// Puts a window above its siblings, asking the window manager where there is one.
    void raise(xcb_window_t window);

    void setNumbers(xcb_window_t window, const QByteArray& property,
                    const std::vector<std::uint32_t>& values, xcb_atom_t type = XCB_ATOM_CARDINAL);
    void remove(xcb_window_t window, const QByteArray& property);
    /// Asks the window manager for something about a window.
    void ask(xcb_window_t window, const QByteArray& message, std::uint32_t value,
             std::uint32_t second = 0);

    /// Paints the desktop itself; colours must be ones that every depth has.
    void paintDesktop(const QImage& picture);
    void movePointer(QPoint to);
    /// Gives the desktop a pointer that can be seen.
    void setArrowPointer();

    void takeSelection(const QByteArray& selection, xcb_window_t window);
    void dropSelection(const QByteArray& selection);

    /// The window's rectangle in native pixels as it and all its borders lie on the screen.
    [[nodiscard]] QRect outerRect(xcb_window_t window) const;
    /// The child of the root window that holds this window: itself, or its frame.
    [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;
    [[nodiscard]] bool isViewable(xcb_window_t window) const;

private:
    void sync() const;

    xcb_connection_t* m_connection;
    const xcb_screen_t* m_screen;
};

} // namespace brindlecam::test
