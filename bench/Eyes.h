#pragma once

#include "desktop/support/Desktop.h"
#include "desktop/support/x11/Connection.h"

#include <QImage>
#include <QPoint>
#include <QRect>

#include <xcb/damage.h>

#include <chrono>
#include <optional>
#include <vector>

namespace brindlecam::bench {

using Clock = std::chrono::steady_clock;

[[nodiscard]] inline double millisecondsBetween(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double, std::milli>(to - from).count();
}

/// A pixel of the screen and the colour it must show, alpha ignored.
struct Sample {
    QPoint place;
    QRgb colour = 0;
};

/// Another client that sees when something is on the screen. It sleeps until the server reports
/// damage of the root window, so that watching takes no time from those who are watched; then it
/// looks at a few pixels.
class Eyes final {
public:
    explicit Eyes(desktop::Desktop& desktop);

    /// The first moment at which all samples show, or none within the patience.
    [[nodiscard]] std::optional<Clock::time_point> await(const std::vector<Sample>& samples);
    /// The first moment at which the place shows anything else, or none within the patience.
    [[nodiscard]] std::optional<Clock::time_point> awaitOther(const Sample& sample);
    /// The whole screen once nothing has moved for a while.
    [[nodiscard]] QImage grabAtRest();

private:
    template <typename Condition>
    [[nodiscard]] std::optional<Clock::time_point> awaitThat(Condition holds);
    [[nodiscard]] bool shows(const std::vector<Sample>& samples) const;
    /// Sleeps until something is drawn; false when nothing is.
    [[nodiscard]] bool sleepUntilDamage(std::chrono::milliseconds patience) const;

    const desktop::Screen& m_screen;
    desktop::Connection m_connection;
    xcb_damage_damage_t m_damage = 0;
    std::uint8_t m_damageNotify = 0;
};

/// Places on a grid where `after` shows something else than `before`, with the colour of `after`.
[[nodiscard]] std::vector<Sample> changes(const QImage& before, const QImage& after,
                                          const QRect& within, int step);

/// At most so many of them, evenly chosen, the last included.
[[nodiscard]] std::vector<Sample> thinned(const std::vector<Sample>& samples, std::size_t most);

} // namespace brindlecam::bench
