#pragma once

#include "desktop/support/ClientWindow.h"
#include "desktop/support/x11/Connection.h"

namespace brindlecam::desktop {

/// A window that the server repaints by itself, on a connection of its own.
class X11ClientWindow final : public ClientWindow {
public:
    X11ClientWindow(const QString& display, const ClientWindowOptions& options);

    [[nodiscard]] WindowId id() const override { return m_window; }
    [[nodiscard]] QRect pixels() const override;
    [[nodiscard]] QRect framePixels() const override;
    [[nodiscard]] bool hasFocus() const override;
    void takeFocus() override;
    void raise() override;
    void lower() override;
    void paint(QColor colour) override;
    void paint(const QImage& picture) override;
    void claimFullScreen(bool fullScreen) override;
    void forget() override;
    [[nodiscard]] const std::vector<KeyPress>& keys() override;
    [[nodiscard]] const std::vector<Click>& clicks() override;

    // What only other programs of this server look at.
    [[nodiscard]] const Connection& connection() const { return m_connection; }
    /// Presses and releases of keys since the last forget().
    [[nodiscard]] int keyEvents();
    /// How often it has got the focus since it was made.
    [[nodiscard]] int focusGains();

private:
    void restack(std::uint32_t mode);
    void announce(const ClientWindowOptions& options) const;
    void setAtom(const QByteArray& property, const QByteArray& value) const;
    [[nodiscard]] bool isViewable() const;
    void collect();

    Connection m_connection;
    xcb_window_t m_window = 0;
    std::vector<KeyPress> m_keys;
    std::vector<Click> m_clicks;
    int m_keyEvents = 0;
    int m_focusGains = 0;
};

} // namespace brindlecam::desktop
