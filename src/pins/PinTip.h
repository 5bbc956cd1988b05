#pragma once

#include "look/Pill.h"
#include "pins/PinPorts.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSizeF>
#include <QTimer>

#include <chrono>
#include <memory>

namespace brindlecam {

class Activity;
class FloatingPanel;
class PinnedCapture;
struct ScreenInfo;

/// The tool tip of the pin under the pointer, as a panel in the look of our messages instead of
/// Qt's own window. Qt says when; what the user does next ends it, or its time. Main thread;
/// borrows the ports.
class PinTip final : public QObject {
    Q_OBJECT

public:
    /// Both outlive it. While a capture runs nothing is shown, which would be in its picture.
    PinTip(const PinPorts& ports, const Activity& activity,
           std::chrono::milliseconds stay = kToolTipStay);
    ~PinTip() override;

    /// Shows the tool tips of this pin and of what is in it from now on.
    void serve(PinnedCapture& pin);
    /// Takes it off the screen; false when there was none.
    bool dismiss();

    /// Where a tip of this size (points) stands: under the pointer, above it where the screen ends,
    /// clear of docks. Native pixels of the global desktop.
    [[nodiscard]] static QRect place(QSizeF tip, QPoint pointer, const ScreenInfo& screen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void present(const QString& text, QPoint pointer);

    const PinPorts m_ports;
    const Activity& m_activity;
    std::unique_ptr<FloatingPanel> m_panel; ///< only while a tip is shown
    QTimer m_end;
};

} // namespace brindlecam
