#pragma once

#include "platform/x11/connection/X11Events.h"

#include <QObject>
#include <QRect>
#include <QSize>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace brindlecam {

/// Watches whether a full-screen window lies above all managed windows, those that stay on top
/// included: that is so while it has the focus (EWMH, "Stacking order"), and with some window
/// managers while the focus is on another screen. Main thread; it listens to the server and asks
/// nothing as long as the windows stay as they are.
class FullScreenWatch final : public QObject {
    Q_OBJECT

public:
    struct Callbacks {
        /// Whether our own windows must not be made anew now, as while one is dragged. As long as
        /// it is true, covers() keeps its answer; it is asked again whenever a mouse button is
        /// released or a window of ours is hidden.
        std::function<bool()> isHeld;
        /// Called from the event loop each time it has looked again: covers() may have changed.
        std::function<void()> looked;
    };

    FullScreenWatch(std::shared_ptr<X11Events> events, Callbacks callbacks);
    ~FullScreenWatch() override;

    [[nodiscard]] bool covers() const { return !m_covering.empty(); }
    /// Whether such a window lies in a part of this rectangle (native pixels of the desktop).
    [[nodiscard]] bool coversPartOf(const QRect& rect) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool mayMeanAChange(const xcb_generic_event_t& event);
    void look();
    /// Looks. False when covers() keeps its answer for now, because a window of ours is in use or
    /// has the focus.
    bool update();
    void listenTo(const std::vector<xcb_window_t>& windows);
    void listenAlsoTo(xcb_window_t window);

    std::shared_ptr<X11Events> m_events;
    Callbacks m_callbacks;
    std::vector<QRect> m_covering;            ///< native pixels
    std::map<xcb_window_t, QSize> m_listened; ///< other programs' windows, as large as they were
    QTimer m_soon;
    QTimer m_later;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
