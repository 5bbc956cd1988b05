#pragma once

#include "platform/Panels.h"

#include <QImage>
#include <QSizeF>
#include <QWidget>

#include <functional>

class QPainter;

namespace brindlecam {

class Compositing;
struct Pill;

/// What a floating panel shows: a rounded shape that paints itself from (0, 0), in points.
struct FloatingContent {
    QSizeF size;
    qreal radius = 0;
    std::function<void(QPainter&)> paint;
    QString spoken; ///< what assistive technology reads out

    [[nodiscard]] static FloatingContent of(const Pill& pill);
};

/// A small translucent panel above the windows that takes neither focus nor mouse: toast, tool tip,
/// countdown. Where nothing blends windows together it is shaped, and blends itself with what lay
/// beneath it when it was shown. Main thread; borrows the ports.
class FloatingPanel final : public QWidget {
    Q_OBJECT

public:
    FloatingPanel(Panels& panels, Compositing& compositing, PanelRole role,
                  FloatingContent content);

    /// Shows it with its top-left corner in the corner of `native` (pixels of the global desktop),
    /// which should be the content's size at `scale`, that of the screen. What `replaced`, which is
    /// still on the screen, covers is taken from its own backdrop.
    void showAt(const QRect& native, qreal scale, const FloatingPanel* replaced = nullptr);

    /// 1: as it is; 0: invisible.
    void setStrength(double strength);

    /// In how many steps a fade looks smooth without being dear.
    [[nodiscard]] int fadeSteps() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void takeOverBackdrop(const FloatingPanel& replaced);
    void paintBackdrop(QPainter& painter);
    void paintFaint(QPainter& painter) const;

    Panels& m_panels;
    Compositing& m_compositing;
    const FloatingContent m_content;
    const bool m_blends;
    double m_strength = 1; ///< what is left to paint of it
    qreal m_scale = 1;     ///< native pixels per point
    QRect m_native;        ///< where m_backdrop lies, pixels of the global desktop
    QImage m_backdrop;     ///< native pixels; null when windows blend or it could not be read
};

} // namespace brindlecam
