#pragma once

#include <QAbstractButton>

namespace brindlecam {

/// A small button on the drawer's dark ground: plain text that gets a ground of its own under the
/// pointer. Main thread.
class DrawerButton final : public QAbstractButton {
    Q_OBJECT

public:
    DrawerButton(const QString& title, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace brindlecam
