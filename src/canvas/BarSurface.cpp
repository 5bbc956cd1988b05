#include "canvas/BarSurface.h"

#include "canvas/BarLook.h"

#include <QMouseEvent>
#include <QPainter>

namespace brindlecam {

BarSurface::BarSurface(QSize size, QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(size);
    setCursor(Qt::ArrowCursor);
}

void BarSurface::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    BarLook::paintGround(painter, rect());
}

// QWidget itself would hand each of these on to the canvas.

void BarSurface::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void BarSurface::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}

void BarSurface::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

} // namespace brindlecam
