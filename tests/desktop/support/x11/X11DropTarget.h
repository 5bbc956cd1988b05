#pragma once

#include "desktop/support/DropTarget.h"
#include "desktop/support/x11/Connection.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace brindlecam::desktop {

/// Speaks XDND, version 5.
class X11DropTarget final : public DropTarget {
public:
    /// Returns once the window can be seen.
    X11DropTarget(const QString& display, const QRect& pixels, DropManners manners);
    ~X11DropTarget() override;

    [[nodiscard]] QRect pixels() const override { return m_pixels; }
    [[nodiscard]] bool wasEntered() const override { return m_entered; }
    [[nodiscard]] std::optional<QByteArray> dropped() const override;

private:
    void serve(const QString& display);
    /// False: it is dead from now on.
    [[nodiscard]] bool answer(const Connection& connection, xcb_window_t window,
                              const xcb_client_message_event_t& message);
    void receive(const Connection& connection, xcb_window_t window,
                 const xcb_selection_notify_event_t& notice);

    const QRect m_pixels;
    const DropManners m_manners;
    std::atomic<bool> m_serves = false;
    std::atomic<bool> m_ends = false;
    std::atomic<bool> m_entered = false;
    xcb_window_t m_source = XCB_WINDOW_NONE; ///< of the drag; the thread's own
    mutable std::mutex m_mutex;
    std::optional<QByteArray> m_dropped; ///< under m_mutex
    std::thread m_thread;
};

} // namespace brindlecam::desktop
