#pragma once

#include <QAbstractButton>

namespace brindlecam {

/// A button on the dark ground of one of our panels: plain text that gets a ground of its own under
/// the pointer. A click leaves the keyboard alone. Main thread.
class PanelButton final : public QAbstractButton {
    Q_OBJECT

public:
    enum class Size {
        small,   ///< 20 points high, its ground is faint
        regular, ///< 28 points high
    };
    PanelButton(const QString& title, Size size, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    const Size m_size;
};

} // namespace brindlecam
