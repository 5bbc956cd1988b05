#include "canvas/TipPlacement.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace brindlecam::TipPlacement {

namespace {

// Points.
constexpr int kMargin = 4; // from the edges of the canvas
constexpr int kGap = 6;    // from bars and popups, as between those

enum class Side { above, below };

/// From one place on a row to another, the second one outside.
struct Span {
    int from = 0;
    int to = 0;
};

// A column is a row with x and y exchanged.

QRect exchanged(const QRect& rect)
{
    return {rect.y(), rect.x(), rect.height(), rect.width()};
}

Surroundings exchanged(const Surroundings& around)
{
    Surroundings row{.control = exchanged(around.control),
                     .bar = exchanged(around.bar),
                     .shown = {},
                     .selection = {around.selection.y(), around.selection.x(),
                                   around.selection.height(), around.selection.width()},
                     .canvas = around.canvas.transposed()};
    for (const QRect& each : around.shown)
        row.shown.push_back(exchanged(each));
    return row;
}

/// Where a length begins that lies nearest to where it should, within and beside all `taken`.
std::optional<int> nearestFree(int wanted, int length, Span within, const std::vector<Span>& taken)
{
    const auto isFree = [&](int from) {
        return from >= within.from && from + length <= within.to &&
               std::ranges::none_of(taken, [&](const Span& span) {
                   return from < span.to && from + length > span.from;
               });
    };
    std::vector<int> tries{std::max(within.from, std::min(wanted, within.to - length))};
    for (const Span& span : taken) {
        tries.push_back(span.from - length);
        tries.push_back(span.to);
    }
    std::optional<int> best;
    for (const int from : tries) {
        if (isFree(from) && (!best || std::abs(from - wanted) < std::abs(*best - wanted)))
            best = from;
    }
    return best;
}

/// Above or below a bar or popup.
int topOf(QSize tip, Side side, const QRect& bar)
{
    return side == Side::above ? bar.y() - kGap - tip.height() : bar.y() + bar.height() + kGap;
}

/// The free place with its top there that is nearest to the control.
std::optional<QRect> atTop(int y, QSize tip, const Surroundings& around)
{
    if (y < kMargin || y + tip.height() > around.canvas.height() - kMargin)
        return std::nullopt;
    std::vector<Span> taken;
    for (const QRect& each : around.shown) {
        if (each.y() - kGap < y + tip.height() && each.y() + each.height() + kGap > y)
            taken.push_back({each.x() - kGap, each.x() + each.width() + kGap});
    }
    const Span within{kMargin, static_cast<int>(std::floor(around.canvas.width())) - kMargin};
    const int centred = around.control.x() + (around.control.width() - tip.width()) / 2;
    const std::optional<int> x = nearestFree(centred, tip.width(), within, taken);
    return x ? std::optional(QRect(QPoint(*x, y), tip)) : std::nullopt;
}

QPoint fromControl(const QRect& tip, const Surroundings& around)
{
    return tip.center() - around.control.center();
}

/// Whether the control's middle is beside the tip: then it is seen what the tip belongs to.
bool isBeside(const QRect& tip, const Surroundings& around)
{
    return 2 * std::abs(fromControl(tip, around).x()) <= tip.width();
}

/// The nearest place beside any bar that is shown.
std::optional<QRect> besideAny(QSize tip, const Surroundings& around)
{
    std::optional<QRect> best;
    const auto distance = [&](const QRect& place) {
        return fromControl(place, around).manhattanLength();
    };
    for (const QRect& each : around.shown) {
        for (const Side side : {Side::above, Side::below}) {
            const auto found = atTop(topOf(tip, side, each), tip, around);
            if (found && (!best || distance(*found) < distance(*best)))
                best = found;
        }
    }
    return best;
}

std::optional<QRect> besideRow(QSize tip, const Surroundings& around)
{
    const bool isAbove = around.bar.y() + around.bar.height() <= around.selection.top();
    const auto better = isAbove ? Side::above : Side::below;
    const auto other = isAbove ? Side::below : Side::above;
    const auto first = atTop(topOf(tip, better, around.bar), tip, around);
    if (first && isBeside(*first, around))
        return first;
    const auto second = atTop(topOf(tip, other, around.bar), tip, around);
    if (second && (!first || isBeside(*second, around)))
        return second;
    return first ? first : besideAny(tip, around);
}

} // namespace

std::optional<QRect> place(QSize tip, const Surroundings& around)
{
    if (around.bar.width() >= around.bar.height())
        return besideRow(tip, around);
    const std::optional<QRect> row = besideRow(tip.transposed(), exchanged(around));
    return row ? std::optional(exchanged(*row)) : std::nullopt;
}

} // namespace brindlecam::TipPlacement
