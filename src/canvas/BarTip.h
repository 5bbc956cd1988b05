#pragma once

#include "look/Pill.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace brindlecam {

/// The tool tip of the control under the pointer, in the look of our messages, where Qt would open
/// a window of its own: one that covers the next button, and that some desktops put anywhere. Qt
/// still says when; pointer, keys and wheel end it, or its time. A child of the canvas, through
/// which the mouse goes. Main thread; points of the canvas.
class BarTip final : public QWidget {
    Q_OBJECT

public:
    /// Where a tip of this size stands for a control; none where it has no room.
    using Placing = std::function<std::optional<QRect>(const QWidget& control, QSize tip)>;

    BarTip(QWidget& canvas, Placing placing, std::chrono::milliseconds stay = kToolTipStay);

    /// Shows this control's tool tip from now on. The control outlives this.
    void serve(QWidget& control);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void present(const QWidget& control);
    void dismiss();

    const Placing m_placing;
    std::vector<const QWidget*> m_served;
    QPointer<const QWidget> m_control; ///< whose tip is shown
    Pill m_pill;
    QTimer m_end;
};

} // namespace brindlecam
