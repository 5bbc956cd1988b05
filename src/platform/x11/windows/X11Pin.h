#pragma once

#include "platform/Pins.h"
#include "platform/x11/windows/BackingRoom.h"
#include "platform/x11/windows/PanelWindow.h"
#include "platform/x11/windows/PinShape.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

class CompositorWatch;
class PanelWindows;

/// A pin's window on X11: placed by the pixel, cut where nothing blends its corners, and taken from
/// the window manager while a full-screen window is there, which that would put above it. Main
/// thread.
class X11Pin final : public QObject, public PinSurface {
    Q_OBJECT

public:
    /// `gone` runs when it ends.
    X11Pin(QWidget& widget, qreal radius, std::function<void()> changed,
           std::shared_ptr<PanelWindows> panels, std::shared_ptr<CompositorWatch> compositor,
           std::function<void(const X11Pin&)> gone);
    ~X11Pin() override;

    void show(const PinPlace& place) override;
    void place(const PinPlace& place) override;
    [[nodiscard]] QRect rect() override { return m_window.nativeRect(); }
    [[nodiscard]] QSize pixels() const override;
    [[nodiscard]] bool blends() const override;
    [[nodiscard]] QPoint onDesktop(QPointF place) override;
    void grip() override;
    [[nodiscard]] QPoint hand(const QMouseEvent& event) override;
    void letGo() override {}

    [[nodiscard]] PanelWindow& window() { return m_window; }
    /// Puts it over a full-screen window, or back among the other windows. Says whether it was
    /// shown anew for that.
    bool setOverFullScreen(bool over);

protected:
    /// The widget has got another size.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cutForWidget();
    void cut(QSize pixels);
    X11Events::Verdict handle(const xcb_generic_event_t& event);

    QWidget& m_widget;
    const qreal m_radius; ///< points
    const std::function<void()> m_changed;
    const std::function<void(const X11Pin&)> m_gone;
    const std::shared_ptr<PanelWindows> m_panels;
    const std::shared_ptr<CompositorWatch> m_compositor;
    PanelWindow m_window;
    BackingRoom m_room;
    x11::PinShape m_shape;
    std::optional<QSize> m_cut; ///< what the window was cut for, in pixels; empty: for nothing
    qreal m_scale = 1;          ///< of the screen it was put on last
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
