#pragma once

#include "platform/x11/connection/X11Events.h"
#include "platform/x11/windows/AskedPlaces.h"
#include "platform/x11/windows/PaintHold.h"
#include "platform/x11/windows/PanelTraits.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QRegion>
#include <QWidget>

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

namespace x11 {
class ServerClock;
}

/// One widget in its panel role: keeps its native window where it belongs and gives it the focus.
/// Main thread; rectangles are native pixels. Lives as long as its widget.
class PanelWindow final : public QObject {
    Q_OBJECT

public:
    PanelWindow(QWidget& widget, PanelRole role, const x11::PanelTraits& traits,
                std::shared_ptr<X11Events> events, x11::ServerClock& clock);

    void show(const QRect& native);
    /// The next show() is of a window that gets its pixels from somebody else at once; the widget
    /// paints from when `mayPaint` runs.
    void holdPainting(std::function<void()> mayPaint);
    /// Nobody else could give it its pixels.
    void paintAll();
    void focus();
    /// Where it belongs from now on.
    void moveTo(const QRect& native);
    /// Where it was put last, as long as nobody else has moved it from there; empty before it was
    /// shown.
    [[nodiscard]] QRect nativeRect();
    void setShape(const QRegion& pixels);

    [[nodiscard]] PanelRole role() const { return m_role; }
    [[nodiscard]] xcb_window_t id() const;
    /// Whether it may have transparent parts, where a compositor is there to blend them.
    [[nodiscard]] bool canBlend() const { return m_traits.blends; }
    [[nodiscard]] bool isShown() const { return m_widget.isVisible(); }
    /// Takes a pin away from the window manager, which would keep it below a full-screen window,
    /// and gives it back. Says whether it was shown anew for that; other panels stay as they are.
    bool setOverFullScreen(bool over);
    /// Brings it to the front of its kind.
    void raise();
    /// Puts it right below another panel, unless a window manager orders it.
    void lowerBelow(const PanelWindow& other);

protected:
    /// A press on an overlay gives it the focus before the press arrives.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchWindow();
    void setHints();
    void setUserTime(xcb_timestamp_t time);
    void setSizeHints();
    void place();
    void cut();
    void reserve(QSize pixels);
    void keepPlace(const QRect& actual);
    void keepPlaceOnRoot();
    void bringBack();
    void focusNow();
    void insistOnFocus(const xcb_focus_out_event_t& event);
    [[nodiscard]] bool cameWithTheMap(const xcb_expose_event_t& event);
    X11Events::Verdict expose(const xcb_expose_event_t& event);
    X11Events::Verdict handle(const xcb_generic_event_t& event);

    QWidget& m_widget;
    PanelRole m_role;
    x11::PanelTraits m_traits;
    std::shared_ptr<X11Events> m_events;
    x11::ServerClock& m_clock;
    QRect m_native; ///< where it belongs; empty: wherever it is
    x11::AskedPlaces m_asked;
    std::optional<QRegion> m_shape; ///< native pixels; none: nobody has cut it
    qint64 m_reserved = 0; ///< how many pixels a pin's backing store has room for; 0: unknown
    int m_correctionsLeft = 0;
    bool m_focusWhenMapped = false;
    QDeadlineTimer m_insists{0}; ///< how long an overlay takes a lost focus back
    int m_insistencesLeft = 0;
    /// Number of the request that mapped it, until the exposure that comes with it.
    std::optional<std::uint16_t> m_mappedBy;
    QPointer<QObject> m_watched;
    std::unique_ptr<PaintHold> m_hold; ///< since the last show with a first frame
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
