#pragma once

#include <QWidget>

namespace brindlecam {

/// The ground under the controls of a bar or popup. A press on it never reaches the canvas beneath,
/// the wheel and keys do; over it the pointer is an arrow. Main thread; points.
class BarSurface : public QWidget {
    Q_OBJECT

public:
    /// It has this size for good.
    BarSurface(QSize size, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

} // namespace brindlecam
