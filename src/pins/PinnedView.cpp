#include "pins/PinnedView.h"

#include "base/Text.h"
#include "look/DevicePixels.h"
#include "look/WheelDelta.h"
#include "pins/PinGeometry.h"
#include "pins/PinnedCapture.h"
#include "preferences/Config.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyleHints>
#include <QWheelEvent>

#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kRadius = PinnedCapture::kCornerRadius;
constexpr qreal kBorderWidth = 1.5;

const QColor kBorderColor = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.35F);

} // namespace

PinnedView::PinnedView(const QImage& image, PinnedCapture& panel)
    : QWidget(&panel)
    , m_panel(&panel)
    , m_picture(image)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(text("Captura fijada"));
    setToolTip(text("Arrastra para mover · rueda para cambiar el tamaño · doble clic para cerrar · "
                    "clic derecho para más"));
}

void PinnedView::setPixels(QSize pixels, qreal scale)
{
    if (m_pixels == pixels && m_scale == scale)
        return;
    m_pixels = pixels;
    m_scale = scale;
    update();
}

void PinnedView::setCorners(Corners corners)
{
    if (m_corners == corners)
        return;
    m_corners = corners;
    update();
}

// Painting.

void PinnedView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const DevicePixels pixels(painter); // a fractional scale must not blur the picture
    m_picture.paint(painter, QRect(QPoint(), m_pixels));
    painter.setRenderHint(QPainter::Antialiasing);
    paintBorder(painter);
    if (m_corners == Corners::blended)
        eraseCorners(painter); // the border's, too
}

// A line of one and a half points is one and a half pixels: rounding it would make it a third wider
// on most screens.
void PinnedView::paintBorder(QPainter& painter) const
{
    const QColor color = m_hovering ? Config::leafGreen : kBorderColor;
    const QRectF whole(QPointF(), m_pixels);
    const qreal width = kBorderWidth * m_scale;
    const qreal radius = kRadius * m_scale;
    if (m_corners == Corners::blended) {
        const qreal inset = width / 2;
        painter.setPen(QPen(color, width));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(whole.adjusted(inset, inset, -inset, -inset), radius, radius);
        return;
    }
    // Soft inside only: outside the picture would shine through where the window is cut.
    QPainterPath ring;
    ring.addRect(whole);
    ring.addRoundedRect(whole.adjusted(width, width, -width, -width), radius - width / 2,
                        radius - width / 2);
    painter.fillPath(ring, color);
}

// Only the four corners: a rounded clip would make the whole picture slow.
void PinnedView::eraseCorners(QPainter& painter) const
{
    const QRectF whole(QPointF(), m_pixels);
    const qreal radius = kRadius * m_scale;
    QPainterPath rounded;
    rounded.addRoundedRect(whole, radius, radius);
    const QSizeF side = QSizeF(radius, radius).boundedTo(whole.size() / 2);
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    for (const QPointF corner : {whole.topLeft(), whole.topRight() - QPointF(side.width(), 0),
                                 whole.bottomLeft() - QPointF(0, side.height()),
                                 whole.bottomRight() - QPointF(side.width(), side.height())}) {
        QPainterPath square;
        square.addRect({corner, side});
        painter.fillPath(square - rounded, Qt::black);
    }
    painter.restore();
}

// The pointer.

void PinnedView::setHovering(bool hovering)
{
    if (m_hovering == hovering)
        return;
    m_hovering = hovering;
    update();
}

void PinnedView::enterEvent(QEnterEvent*)
{
    setHovering(true);
}

void PinnedView::leaveEvent(QEvent*)
{
    setHovering(false);
}

void PinnedView::hideEvent(QHideEvent*)
{
    setHovering(false); // nobody says that the pointer leaves a window that is gone
}

void PinnedView::mousePressEvent(QMouseEvent* event)
{
    if (!m_panel || event->button() != Qt::LeftButton)
        return;
    m_pressedAt = event->timestamp();
    m_panel->grip(event->scenePosition());
}

void PinnedView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panel && event->buttons().testFlag(Qt::LeftButton))
        m_panel->follow(*event);
}

void PinnedView::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_panel && event->button() == Qt::LeftButton)
        m_panel->letGo();
}

// Qt 6.4 asks only whether two presses were near each other in time and place, not whether they
// were in the same window; the first may have been on the button of a session that is over now.
// Drop it when every Qt we build with asks for the window, as 6.11 does.
void PinnedView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!m_panel || event->button() != Qt::LeftButton)
        return;
    const auto first = std::exchange(m_pressedAt, std::nullopt);
    const auto interval =
        static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    if (first && event->timestamp() - *first <= interval)
        m_panel->dismiss();
}

void PinnedView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const WheelDelta turn = WheelDelta::of(*event);
    if (m_panel && turn.amount != 0)
        m_panel->zoomBy(PinGeometry::factor(turn));
}

// The menu.

void PinnedView::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_panel)
        m_panel->openMenu(event->reason() == QContextMenuEvent::Mouse ? event->pos()
                                                                      : rect().center());
}

void PinnedView::keyPressEvent(QKeyEvent* event)
{
    if (m_panel && event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        m_panel->openMenu(rect().center());
    else
        QWidget::keyPressEvent(event);
}

} // namespace brindlecam
