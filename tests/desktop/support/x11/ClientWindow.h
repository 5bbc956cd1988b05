#pragma once

#include "desktop/support/Pictures.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <cstdint>
#include <vector>

namespace brindlecam::desktop {

enum class WindowKind {
    normal,
    dialog,
    dock,
    utility,
    unmanaged, ///< override-redirect: the window manager never sees it
};

struct ClientWindowOptions {
    QRect pixels{100, 100, 400, 300};
    QString title = QStringLiteral("Ventana");
    WindowKind kind = WindowKind::normal;
    QColor colour = Qt::blue;
    QImage picture{}; ///< tiles the window instead of the colour when not null
};

struct KeyPress {
    xcb_keysym_t key = 0;
    std::uint16_t modifiers = 0; ///< XCB_MOD_MASK_… bits
};

struct Click {
    QPoint place; ///< native pixels of the window
    std::uint8_t button = 0;
};

/// A plain window of another program. It remembers the keys and clicks it gets; the server repaints
/// it, so nobody has to serve it. Native pixels.
class ClientWindow final {
public:
    /// Returns once the window can be seen.
    ClientWindow(const QString& display, const ClientWindowOptions& options);

    [[nodiscard]] xcb_window_t id() const { return m_window; }
    /// The inside of the window, in pixels of the whole screen.
    [[nodiscard]] QRect pixels() const;
    [[nodiscard]] bool hasFocus() const;
    /// Takes the keyboard focus without asking the window manager.
    void takeFocus();
    /// Repaints the whole window in one colour.
    void paint(QColor colour);
    /// Waits until a key or click could have arrived and forgets all before.
    void forget();

    /// Presses since the last forget(), oldest first, repeats included.
    [[nodiscard]] const std::vector<KeyPress>& keys();
    [[nodiscard]] const std::vector<Click>& clicks();

private:
    void announce(const ClientWindowOptions& options) const;
    void setAtom(const QByteArray& property, const QByteArray& value) const;
    [[nodiscard]] bool isViewable() const;
    void collect();

    Connection m_connection;
    xcb_window_t m_window = 0;
    std::vector<KeyPress> m_keys;
    std::vector<Click> m_clicks;
};

} // namespace brindlecam::desktop
