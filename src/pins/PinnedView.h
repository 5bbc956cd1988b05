#pragma once

#include "pins/PinPicture.h"

#include <QPointer>
#include <QWidget>

#include <optional>

namespace brindlecam {

class PinnedCapture;

/// What a pin shows: the capture with rounded corners and a border that turns green under the
/// pointer. Hands every gesture on to its pin, and ignores them once that is gone. Main thread.
class PinnedView final : public QWidget {
    Q_OBJECT

public:
    /// How the corners are rounded.
    enum class Corners {
        blended, ///< painted transparent
        cut,     ///< left to the shape of the window
    };

    /// A child of its pin, which owns it.
    PinnedView(const QImage& image, PinnedCapture& panel);

    /// The pin's size in native pixels, and how many of those make a point.
    void setPixels(QSize pixels, qreal scale);
    /// Repaints it with its corners rounded in this way.
    void setCorners(Corners corners);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setHovering(bool hovering);
    void paintBorder(QPainter& painter) const;
    void eraseCorners(QPainter& painter) const;

    QPointer<PinnedCapture> m_panel;
    PinPicture m_picture;
    QSize m_pixels;
    qreal m_scale = 1; ///< native pixels per point
    Corners m_corners = Corners::blended;
    bool m_hovering = false;
    std::optional<quint64> m_pressedAt; ///< when the left button last went down here, server time
};

} // namespace brindlecam
