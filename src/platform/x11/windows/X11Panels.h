#pragma once

#include "platform/Panels.h"

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class PanelWindows;
class ServerPixels;

/// Panels as windows of X11, with or without a window manager and a compositor. Main thread. A
/// widget that never took a role is shown as it is. Panels that blend get an alpha channel whether
/// or not a compositor runs now, so that one which starts later finds it.
class X11Panels final : public Panels {
public:
    X11Panels(std::shared_ptr<PanelWindows> windows, std::shared_ptr<ServerPixels> pixels);
    ~X11Panels() override;

    void assume(QWidget& widget, PanelRole role, const QRect& native) override;
    void show(QWidget& widget, const QRect& native) override;
    void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame& frame,
                    std::function<void()> mayPaint) override;
    void putAway(QWidget& widget) override;
    void place(QWidget& widget, const QRect& native) override;
    void cut(QWidget& widget, const QRegion& pixels) override;
    void focus(QWidget& widget) override;
    void swallowDoubleClick() override;
    void popUp(QWidget& over, QPoint place, std::vector<MenuEntry> entries) override;
    [[nodiscard]] bool fade(QWidget& widget, double strength) override;

private:
    const std::shared_ptr<PanelWindows> m_windows;
    const std::shared_ptr<ServerPixels> m_pixels;
};

} // namespace brindlecam
