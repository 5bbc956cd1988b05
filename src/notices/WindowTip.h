#pragma once

#include "look/Pill.h"
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSizeF>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>

class QWidget;

namespace brindlecam {

class Activity;
class Compositing;
class Displays;
class FloatingPanel;
class Panels;
struct ScreenInfo;

/// The tool tip of what lies under the pointer in a window of ours that floats above the others, as
/// a panel in the look of our messages instead of Qt's own window. Qt says when; what the user does
/// next ends it, or its time. Main thread; borrows the ports.
class WindowTip final : public QObject {
    Q_OBJECT

public:
    struct Ports {
        Panels& panels;
        Displays& displays;
        Compositing& compositing;
    };
    /// The native pixel of the global desktop at a place in points from the window's own corner.
    using OnDesktop = std::function<QPoint(QPointF place)>;

    /// The activity outlives it, too. While a capture runs nothing is shown, which would be in its
    /// picture.
    WindowTip(const Ports& ports, const Activity& activity,
              std::chrono::milliseconds stay = kToolTipStay);
    ~WindowTip() override;

    /// Shows the tool tips of this window and of what is in it from now on, as long as it lives.
    /// What is `spared` (native pixels of the global desktop) is never covered by one: where there
    /// is no room beside it none is shown.
    void serve(QWidget& window, OnDesktop onDesktop, const QRect& spared = {});
    /// Takes it off the screen; false when there was none.
    bool dismiss();

    /// Where a tip of this size (points) stands: under the pointer, above it where the screen ends,
    /// clear of docks. Native pixels of the global desktop.
    [[nodiscard]] static QRect place(QSizeF tip, QPoint pointer, const ScreenInfo& screen);
    /// The same, or above the pointer, where it covers nothing of what is spared.
    [[nodiscard]] static std::optional<QRect> placeBeside(const QRect& spared, QSizeF tip,
                                                          QPoint pointer, const ScreenInfo& screen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Served {
        OnDesktop onDesktop;
        QRect spared;
    };

    void present(const QString& text, QPoint pointer, const QRect& spared);

    const Ports m_ports;
    const Activity& m_activity;
    std::unordered_map<const QObject*, Served> m_served;
    std::unique_ptr<FloatingPanel> m_panel; ///< only while a tip is shown
    QTimer m_end;
};

} // namespace brindlecam
