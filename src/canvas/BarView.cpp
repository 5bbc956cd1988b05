#include "canvas/BarView.h"

#include "canvas/BarButton.h"

namespace brindlecam {

namespace {

// Points.
constexpr int kPadding = 4;
constexpr int kSpacing = 2;
constexpr int kAcross = BarButton::kSide + 2 * kPadding;
constexpr int kPace = BarButton::kSide + kSpacing;

QSize sizeOf(Qt::Orientation orientation, std::size_t buttons)
{
    const int count = static_cast<int>(buttons);
    const int along = count * kPace - kSpacing + 2 * kPadding;
    return orientation == Qt::Vertical ? QSize(kAcross, along) : QSize(along, kAcross);
}

} // namespace

BarView::BarView(Qt::Orientation orientation, std::vector<std::unique_ptr<BarButton>> buttons,
                 QWidget* parent)
    : BarSurface(sizeOf(orientation, buttons.size()), parent)
{
    int offset = kPadding;
    for (auto& button : buttons) {
        button->setParent(this);
        button->move(orientation == Qt::Vertical ? QPoint(kPadding, offset)
                                                 : QPoint(offset, kPadding));
        offset += kPace;
        m_buttons.push_back(button.release());
    }
}

} // namespace brindlecam
