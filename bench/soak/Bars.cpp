#include "Bars.h"

#include "Failure.h"
#include "Person.h"

namespace brindlecam::soak::Bars {

namespace {

// At least what they take.
constexpr int kGap = 8;       // between area and bar
constexpr int kWide = 38;     // a bar across
constexpr int kTools = 390;   // the tools bar's length
constexpr int kActions = 230; // the actions bar's length
constexpr int kPopup = 220;   // a popup beside the tools bar
constexpr int kMargin = 4;    // bars and edges of the monitor
constexpr int kLabel = 40;    // the area's size above it, which would lie inside otherwise

} // namespace

void press(Person& person, const char* button)
{
    require(person.press(button),
            QStringLiteral("there is no button %1").arg(QString::fromUtf8(button)));
}

bool haveRoom(const QRect& area, const QRect& monitor)
{
    const QRect needed(area.left() + area.width() - kActions, area.top() - kLabel,
                       kActions + kGap + kWide + kPopup, kLabel + kTools);
    const QRect below(area.left(), area.top() + area.height(), 1, kGap + kWide);
    return monitor.adjusted(kMargin, kMargin, -kMargin, -kMargin).contains(needed | below);
}

} // namespace brindlecam::soak::Bars
