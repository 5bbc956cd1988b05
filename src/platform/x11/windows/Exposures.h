#pragma once

#include "platform/x11/connection/X11Events.h"
#include "platform/x11/windows/PaintHold.h"

#include <QWidget>

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

/// Decides which of the server's exposures of a panel reach Qt: what it would send then may be
/// there already, or may never have been painted. Main thread. Lives as long as its widget.
class Exposures final {
public:
    explicit Exposures(QWidget& widget);

    /// The next show is of a window that gets its pixels from somebody else at once; the widget
    /// paints from when `mayPaint` runs.
    void holdPainting(std::function<void()> mayPaint);
    /// Nobody else could give it its pixels.
    void paintAll();

    /// For every event of the server.
    X11Events::Verdict handle(const xcb_generic_event_t& event);

private:
    [[nodiscard]] xcb_window_t id() const;
    [[nodiscard]] bool cameWithTheMap(const xcb_expose_event_t& event);
    X11Events::Verdict expose(const xcb_expose_event_t& event);

    QWidget& m_widget;
    /// Number of the request that mapped it, until the exposure that comes with it.
    std::optional<std::uint16_t> m_mappedBy;
    std::unique_ptr<PaintHold> m_hold; ///< since the last show with a first frame
};

} // namespace brindlecam
