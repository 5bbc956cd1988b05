#pragma once

#include <QPushButton>

namespace brindlecam {

/// A button beside a line of small text: as large as its own title needs, no larger. Main thread.
class SmallButton final : public QPushButton {
    Q_OBJECT

public:
    SmallButton(const QString& title, const QString& toolTip, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace brindlecam
