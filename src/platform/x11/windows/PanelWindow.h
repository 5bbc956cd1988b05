#pragma once

#include "platform/x11/connection/X11Events.h"
#include "platform/x11/windows/Exposures.h"
#include "platform/x11/windows/FocusKeeper.h"
#include "platform/x11/windows/PanelTraits.h"
#include "platform/x11/windows/PlaceKeeper.h"

#include <QRect>
#include <QWidget>

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <utility>

namespace brindlecam {

namespace x11 {
class ServerClock;
}

/// One widget as a panel: its native window with all that keeps it what it is. Main thread;
/// rectangles are native pixels. Lives as long as its widget.
class PanelWindow final {
public:
    /// `native` is where it will be shown first; empty: nobody knows yet.
    PanelWindow(QWidget& widget, const x11::PanelTraits& traits, std::shared_ptr<X11Events> events,
                x11::ServerClock& clock, const QRect& native = {});

    /// Empty: wherever the window manager wants it.
    void show(const QRect& native);
    /// The next show() is of a window that gets its pixels from somebody else at once; the widget
    /// paints from when `mayPaint` runs.
    void holdPainting(std::function<void()> mayPaint)
    {
        m_exposures.holdPainting(std::move(mayPaint));
    }
    /// Nobody else could give it its pixels.
    void paintAll() { m_exposures.paintAll(); }
    void focus() { m_focus.focus(); }
    /// Where it belongs from now on.
    void moveTo(const QRect& native) { m_place.move(native); }
    /// Where it was put last, as long as nobody else has moved it from there; empty before it was
    /// shown.
    [[nodiscard]] QRect nativeRect() { return m_place.rect(); }

    [[nodiscard]] xcb_window_t id() const;
    /// Whether it may have transparent parts, where a compositor is there to blend them.
    [[nodiscard]] bool canBlend() const { return m_traits.blends; }
    /// Lies above all and takes all input.
    [[nodiscard]] bool isOverlay() const { return m_traits.insists; }
    [[nodiscard]] bool isManaged() const { return m_traits.managed; }
    [[nodiscard]] bool isShown() const { return m_widget.isVisible(); }
    /// Gives it to the window manager or takes it away, with a window made anew, which is not shown
    /// yet.
    void setManaged(bool managed);
    /// Brings it to the front of its kind.
    void raise();
    /// Puts it right below another panel, unless a window manager orders it.
    void lowerBelow(const PanelWindow& other);

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event);

    QWidget& m_widget;
    x11::PanelTraits m_traits;
    x11::ServerClock& m_clock;
    PlaceKeeper m_place;
    FocusKeeper m_focus;
    Exposures m_exposures;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
