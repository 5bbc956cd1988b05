#include "pins/PinGeometry.h"

#include "base/ScreenInfo.h"
#include "look/WheelDelta.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::PinGeometry {

namespace {

constexpr qreal kPointsPerUnit = 200; // of a touchpad
constexpr qreal kNotchesPerUnit = 20;
constexpr qreal kMostPerTurn = 0.2;
constexpr qreal kLeastFactor = 1 - kMostPerTurn;

constexpr qreal kLeastZoom = 0.2;
constexpr qreal kMostZoom = 3;
constexpr qreal kLongestSide = 32000; // native pixels; windows count in 16 bits

constexpr qreal kGrip = 24; // points that a hand needs

qreal squaredDistance(QPointF point, const QRect& rect)
{
    const qreal x = std::clamp(point.x(), qreal(rect.x()), qreal(rect.x() + rect.width()));
    const qreal y = std::clamp(point.y(), qreal(rect.y()), qreal(rect.y() + rect.height()));
    return (point.x() - x) * (point.x() - x) + (point.y() - y) * (point.y() - y);
}

/// What of the frame must be seen on the screen.
QSizeF gripOf(const QRectF& frame, const ScreenInfo& screen)
{
    const QSizeF grip(kGrip * screen.scale, kGrip * screen.scale);
    return grip.boundedTo(frame.size());
}

bool isWithinReach(const QRectF& frame, const ScreenInfo& screen)
{
    const QSizeF seen = frame.intersected(QRectF(screen.native)).size();
    const QSizeF needed = gripOf(frame, screen);
    return seen.width() >= needed.width() && seen.height() >= needed.height();
}

/// Where something `length` long has to begin to lie between `start` and `end`; at the start when
/// it is too long.
qreal fitted(qreal begin, qreal length, qreal start, qreal end)
{
    return std::max(start, std::min(begin, end - length));
}

} // namespace

qreal factor(const WheelDelta& turn)
{
    const bool precise = turn.unit == WheelDelta::Unit::points;
    const qreal delta = turn.amount / (precise ? kPointsPerUnit : kNotchesPerUnit);
    return delta <= -kMostPerTurn ? kLeastFactor : 1 + std::min(delta, kMostPerTurn);
}

QRectF zoomed(const QRectF& frame, QSizeF base, qreal factor)
{
    const qreal longest = std::max(base.width(), base.height());
    if (longest <= 0)
        return frame;
    const qreal most = std::min(kMostZoom, kLongestSide / longest);
    const qreal width = std::clamp(factor * frame.width(), kLeastZoom * base.width(),
                                   std::max(kLeastZoom, most) * base.width());
    const QSizeF size(width, base.height() * width / base.width());
    return {frame.center() - QPointF(size.width(), size.height()) / 2, size};
}

QRectF scaled(const QRectF& frame, QPointF fixed, qreal ratio)
{
    return {fixed + (frame.topLeft() - fixed) * ratio, frame.size() * ratio};
}

QRect onPixels(const QRectF& frame)
{
    const QSize size(std::max(1, qRound(frame.width())), std::max(1, qRound(frame.height())));
    return {QPoint(static_cast<int>(std::floor(frame.x() + 0.5)),
                   static_cast<int>(std::floor(frame.y() + 0.5))),
            size};
}

std::optional<ScreenInfo> screenOf(const QRectF& frame, const std::vector<ScreenInfo>& screens)
{
    const auto nearest = std::ranges::min_element(screens, {}, [&](const ScreenInfo& screen) {
        return squaredDistance(frame.center(), screen.native);
    });
    return nearest == screens.end() ? std::nullopt : std::optional(*nearest);
}

QRectF reachable(const QRectF& frame, const std::vector<ScreenInfo>& screens)
{
    const auto nearest = screenOf(frame, screens);
    if (!nearest || std::ranges::any_of(screens, [&](const ScreenInfo& screen) {
            return isWithinReach(frame, screen);
        }))
        return frame;
    const QRectF free(nearest->visibleFrame);
    return {QPointF(fitted(frame.x(), frame.width(), free.left(), free.right()),
                    fitted(frame.y(), frame.height(), free.top(), free.bottom())),
            frame.size()};
}

} // namespace brindlecam::PinGeometry
