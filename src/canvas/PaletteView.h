#pragma once

#include "canvas/BarSurface.h"

#include <memory>
#include <vector>

namespace brindlecam {

class BarButton;
class SliderTrack;

/// A popup beside the tools bar: a slider between minus and plus, and above it a row of colour
/// swatches where there are any. Main thread; points.
class PaletteView final : public BarSurface {
    Q_OBJECT

public:
    /// What it consists of; all become its children.
    struct Controls {
        std::vector<std::unique_ptr<BarButton>> swatches; ///< left to right, possibly none
        std::unique_ptr<BarButton> minus;
        std::unique_ptr<SliderTrack> track;
        std::unique_ptr<BarButton> plus;
    };

    PaletteView(Controls controls, QWidget* parent);

    [[nodiscard]] SliderTrack& track() const { return *m_track; }
    [[nodiscard]] BarButton& minus() const { return *m_minus; }
    [[nodiscard]] BarButton& plus() const { return *m_plus; }
    [[nodiscard]] const std::vector<BarButton*>& swatches() const { return m_swatches; }
    /// In the order in which Tab goes through them: swatches, minus, slider, plus.
    [[nodiscard]] std::vector<QWidget*> controls() const;

private:
    std::vector<BarButton*> m_swatches;
    BarButton* m_minus;
    SliderTrack* m_track;
    BarButton* m_plus;
};

} // namespace brindlecam
