#pragma once

#include <QRect>
#include <QSize>

#include <vector>

namespace brindlecam {

/// Space that panels and docks keep free at the edges of the desktop. Native pixels.
///
/// QScreen::availableGeometry() is no substitute: Qt (6.4, and 6.11) gives every screen its part of
/// the desktop's one _NET_WORKAREA, in which a panel beside another screen is lost.
namespace Struts {

enum class Edge { left, right, top, bottom };

/// What one window reserves at one edge of the whole desktop (not of a display).
struct Strut {
    Edge edge = Edge::left;
    int depth = 0; ///< pixels from that edge
    int first = 0; ///< where along the edge it begins …
    int last = 0;  ///< … and ends, inclusive

    bool operator==(const Strut&) const = default;
};

/// Every strut that a window reserves now. Two round trips; main thread.
[[nodiscard]] std::vector<Strut> read();

/// What the struts leave of a display. A strut that would take a whole display belongs to the one
/// behind it and takes nothing here.
[[nodiscard]] QRect visibleFrame(const QRect& display, QSize desktop,
                                 const std::vector<Strut>& struts);

} // namespace Struts

} // namespace brindlecam
