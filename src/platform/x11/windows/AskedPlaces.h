#pragma once

#include <QRect>

#include <vector>

namespace brindlecam::x11 {

/// The places that a window was asked to take and may still be on its way to. A window manager
/// answers when it has time, each wish for itself and often in two steps, place before size. So
/// somebody else has moved the window only where it has a place or a size that we have not asked
/// for; how long an answer takes does not matter. Values only; native pixels.
class AskedPlaces final {
public:
    /// It is there, and nothing is on its way.
    void settle(const QRect& place) { m_places = {place}; }
    /// It is to be there next.
    void ask(const QRect& place);

    /// Whether a window that is seen there goes where it was asked to go, or is there already; in
    /// that case nothing is on its way any more.
    [[nodiscard]] bool leadTo(const QRect& seen);

private:
    std::vector<QRect> m_places; ///< oldest first
};

} // namespace brindlecam::x11
