#pragma once

#include "canvas/BarSurface.h"

#include <memory>
#include <vector>

namespace brindlecam {

class BarButton;

/// A row or column of buttons. Main thread; points.
class BarView final : public BarSurface {
    Q_OBJECT

public:
    /// The buttons become its children, in this order from the top or from the left.
    BarView(Qt::Orientation orientation, std::vector<std::unique_ptr<BarButton>> buttons,
            QWidget* parent);

    [[nodiscard]] const std::vector<BarButton*>& buttons() const { return m_buttons; }

private:
    std::vector<BarButton*> m_buttons;
};

} // namespace brindlecam
