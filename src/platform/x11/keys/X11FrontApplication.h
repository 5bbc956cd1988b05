#pragma once

#include "platform/FrontApplication.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/keys/KeySink.h"

#include <xcb/xcb.h>

#include <memory>
#include <optional>

namespace brindlecam {

/// The window the user worked in, by the window manager's word and by the server's. Main thread.
class X11FrontApplication final : public FrontApplication {
public:
    explicit X11FrontApplication(std::shared_ptr<X11Events> events);

    void remember() override;
    void giveBack() override;

private:
    struct Front {
        xcb_window_t active = XCB_WINDOW_NONE; ///< what the window manager calls active
        std::optional<xcb_window_t> focus;     ///< what the server says; none: one of ours
    };
    /// The front of another program; none while one of our windows is in front.
    [[nodiscard]] static std::optional<Front> foreignFront();

    void keysAreUp();
    [[nodiscard]] bool userMovedOn() const;
    void handBack();

    std::shared_ptr<X11Events> m_events;
    std::optional<Front> m_front; ///< kept until it really has the focus again
    std::unique_ptr<KeySink> m_sink;
    bool m_givingBack = false;
};

} // namespace brindlecam
