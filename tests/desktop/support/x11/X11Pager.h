#pragma once

#include "desktop/support/Pager.h"
#include "desktop/support/x11/Connection.h"

#include <initializer_list>

namespace brindlecam::desktop {

/// Speaks to the window manager as the EWMH says.
class X11Pager final : public Pager {
public:
    explicit X11Pager(const QString& display);

    void activate(WindowId window) override;
    void iconify(WindowId window) override;
    void setFullScreen(WindowId window, bool fullScreen) override;
    void move(WindowId window, QPoint pixel) override;
    void focus(WindowId window) override;
    void setDesktopCount(int count) override;
    void goToDesktop(int number) override;
    void sendToDesktop(WindowId window, int number) override;
    [[nodiscard]] int currentDesktop() const override;

private:
    void ask(WindowId window, const QByteArray& message, std::initializer_list<std::uint32_t> data);

    Connection m_connection;
};

} // namespace brindlecam::desktop
