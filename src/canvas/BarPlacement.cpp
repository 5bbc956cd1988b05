#include "canvas/BarPlacement.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::BarPlacement {

namespace {

// Points.
constexpr int kMargin = 4;            // from the edges of the canvas
constexpr int kGap = 8;               // from the selection
constexpr int kPopupGap = 6;          // from the tools bar
constexpr int kPopupAboveCentre = 19; // from a button's centre to its popup's top

/// The nearest whole place that keeps both margins; the near margin counts when it can't.
int within(qreal start, int length, qreal canvasLength)
{
    const int last = static_cast<int>(std::floor(canvasLength)) - kMargin - length;
    return std::max(kMargin, std::min(qRound(start), last));
}

} // namespace

QRect toolsBar(const QRectF& selection, QSizeF canvas, QSize bar)
{
    qreal x = selection.right() + kGap;
    if (x + bar.width() > canvas.width() - kMargin)
        x = selection.left() - kGap - bar.width();
    if (x < kMargin)
        x = selection.right() - bar.width() - kGap;
    return {QPoint(within(x, bar.width(), canvas.width()),
                   within(selection.top(), bar.height(), canvas.height())),
            bar};
}

QRect actionsBar(const QRectF& selection, QSizeF canvas, QSize bar)
{
    qreal y = selection.bottom() + kGap;
    if (y + bar.height() > canvas.height() - kMargin)
        y = selection.top() - kGap - bar.height();
    if (y < kMargin)
        y = selection.bottom() - bar.height() - kGap;
    return {QPoint(within(selection.right() - bar.width(), bar.width(), canvas.width()),
                   within(y, bar.height(), canvas.height())),
            bar};
}

QRect popup(const QRect& toolsBar, int buttonCentreY, QSize popup, QSizeF canvas)
{
    int x = toolsBar.x() + toolsBar.width() + kPopupGap;
    if (x + popup.width() > canvas.width() - kMargin)
        x = toolsBar.x() - kPopupGap - popup.width();
    return {QPoint(within(x, popup.width(), canvas.width()),
                   within(buttonCentreY - kPopupAboveCentre, popup.height(), canvas.height())),
            popup};
}

} // namespace brindlecam::BarPlacement
