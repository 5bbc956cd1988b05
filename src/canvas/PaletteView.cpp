#include "canvas/PaletteView.h"

#include "canvas/BarButton.h"
#include "canvas/SliderTrack.h"

namespace brindlecam {

namespace {

// Points.
constexpr int kPadding = 4;
constexpr int kPace = 32; // from one swatch or row to the next
constexpr int kWidth = 198;
constexpr int kRowHeight = 38;
constexpr int kTwoRowsHeight = 70;
constexpr int kPlusX = 164;

template <typename Control>
Control* adopted(std::unique_ptr<Control> control, QWidget* parent, const QRect& place)
{
    control->setParent(parent);
    control->setGeometry(place);
    return control.release();
}

} // namespace

PaletteView::PaletteView(Controls controls, QWidget* parent)
    : BarSurface({kWidth, controls.swatches.empty() ? kRowHeight : kTwoRowsHeight}, parent)
{
    constexpr int kSide = BarButton::kSide;
    int x = kPadding;
    for (auto& swatch : controls.swatches) {
        m_swatches.push_back(adopted(std::move(swatch), this, {x, kPadding, kSide, kSide}));
        x += kPace;
    }
    const int y = m_swatches.empty() ? kPadding : kPadding + kPace;
    constexpr int kTrackX = kPadding + kSide;
    m_minus = adopted(std::move(controls.minus), this, {kPadding, y, kSide, kSide});
    m_track = adopted(std::move(controls.track), this, {kTrackX, y, kPlusX - kTrackX, kSide});
    m_plus = adopted(std::move(controls.plus), this, {kPlusX, y, kSide, kSide});
}

std::vector<QWidget*> PaletteView::controls() const
{
    std::vector<QWidget*> all(m_swatches.begin(), m_swatches.end());
    all.insert(all.end(), {m_minus, m_track, m_plus});
    return all;
}

} // namespace brindlecam
