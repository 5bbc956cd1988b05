#pragma once

#include "desktop/support/Screen.h"
#include "desktop/support/x11/Connection.h"

namespace brindlecam::desktop {

/// The root window with everything on it.
class X11Screen final : public Screen {
public:
    explicit X11Screen(const QString& display);

    using Screen::grab;
    [[nodiscard]] QRect pixels() const override;
    [[nodiscard]] std::vector<QRect> monitors() const override;
    [[nodiscard]] QImage grab(const QRect& pixels) const override;

private:
    Connection m_connection;
};

} // namespace brindlecam::desktop
