#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <cstdint>
#include <vector>

namespace brindlecam::desktop {

/// A window's number on its desktop; 0 is none.
using WindowId = std::uint64_t;

enum class WindowKind {
    normal,
    dialog,
    dock,
    utility,
    unmanaged, ///< as menus are: the window manager has no part in it
};

struct ClientWindowOptions {
    QRect pixels{100, 100, 400, 300};
    QString title = QStringLiteral("Ventana");
    WindowKind kind = WindowKind::normal;
    QColor colour = Qt::blue;
    QImage picture{}; ///< tiles the window instead of the colour when not null
};

struct KeyPress {
    Qt::Key key{}; ///< by what it types without modifiers
    Qt::KeyboardModifiers modifiers;
};

struct Click {
    QPoint place; ///< native pixels of the window
    std::uint8_t button = 0;
};

/// A plain window of another program. It remembers the keys and clicks it gets; nobody has to serve
/// it. Native pixels.
class ClientWindow {
public:
    ClientWindow() = default;
    virtual ~ClientWindow() = default;
    ClientWindow(const ClientWindow&) = delete;
    ClientWindow& operator=(const ClientWindow&) = delete;

    [[nodiscard]] virtual WindowId id() const = 0;
    /// The inside of the window, in pixels of the whole screen.
    [[nodiscard]] virtual QRect pixels() const = 0;
    /// The same with the window manager's frame; without one when there is none yet.
    [[nodiscard]] virtual QRect framePixels() const = 0;
    /// Whether the window manager has dealt with it by giving it a frame.
    [[nodiscard]] bool isFramed() const { return framePixels() != pixels(); }
    [[nodiscard]] virtual bool hasFocus() const = 0;
    /// Takes the keyboard focus without asking the window manager.
    virtual void takeFocus() = 0;
    /// Puts it above or below all others; a window manager may have its own mind about a managed
    /// one.
    virtual void raise() = 0;
    virtual void lower() = 0;
    /// Repaints the whole window in one colour. One other thread may do so, too.
    virtual void paint(QColor colour) = 0;
    /// Repaints the whole window with a picture, which tiles it.
    virtual void paint(const QImage& picture) = 0;
    /// Says of itself that it is a full-screen window, or that it is none; the window manager has
    /// no part in it.
    virtual void claimFullScreen(bool fullScreen) = 0;
    /// Waits until a key or click could have arrived and forgets all before.
    virtual void forget() = 0;

    /// Presses since the last forget(), oldest first, repeats included.
    [[nodiscard]] virtual const std::vector<KeyPress>& keys() = 0;
    [[nodiscard]] virtual const std::vector<Click>& clicks() = 0;
};

} // namespace brindlecam::desktop
