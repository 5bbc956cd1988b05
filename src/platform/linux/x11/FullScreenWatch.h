#pragma once

#include "platform/linux/x11/X11Events.h"

#include <QRect>
#include <QSize>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace brindlecam {

/// Watches whether a full-screen window lies above all managed windows, those that stay on top
/// included: that is so while it has the focus, and while the focus is on another screen. Main
/// thread; listens only, nothing is asked while the windows stay as they are.
class FullScreenWatch final {
public:
    struct Callbacks {
        /// While it answers true the answer stays as it is. Some event of ours ends that.
        std::function<bool()> isHeld;
        /// Runs later, when the answer may have changed.
        std::function<void()> looked;
    };

    FullScreenWatch(std::shared_ptr<X11Events> events, Callbacks callbacks);
    ~FullScreenWatch();

    [[nodiscard]] bool covers() const { return !m_covering.empty(); }
    /// Whether such a window lies in a part of this rectangle (native pixels of the desktop).
    [[nodiscard]] bool coversPartOf(const QRect& rect) const;

private:
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool mayMeanAChange(const xcb_generic_event_t& event);
    void look();
    void listenTo(const std::vector<xcb_window_t>& windows);
    void listenAlsoTo(xcb_window_t window);

    std::shared_ptr<X11Events> m_events;
    Callbacks m_callbacks;
    std::vector<QRect> m_covering;            ///< native pixels
    std::map<xcb_window_t, QSize> m_listened; ///< other programs' windows, as large as they were
    bool m_waits = false;                     ///< there is something to look at, but it is held
    QTimer m_soon;
    QTimer m_later;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
