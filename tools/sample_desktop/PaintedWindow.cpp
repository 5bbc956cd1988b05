#include "PaintedWindow.h"

#include "WindowFrame.h"

#include <QPainter>

#include <utility>

namespace brindlecam::sample {

PaintedWindow::PaintedWindow(const QRect& place, Scene scene)
    : m_scene(std::move(scene))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setWindowFlag(Qt::FramelessWindowHint);
    setGeometry(place);
}

void PaintedWindow::coverWith(const PaintedWindow& other)
{
    m_above.append(other.geometry().translated(-geometry().topLeft()));
}

void PaintedWindow::setKind(Qt::WidgetAttribute kind)
{
    // Qt forgets the kind of a frameless window while making the native one.
    winId();
    setAttribute(kind);
}

void PaintedWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    m_scene(painter, size());
    painter.restore();
    for (const QRect& window : m_above)
        paintShadow(painter, window);
    if (const auto painted = std::exchange(onPainted, nullptr))
        painted();
}

} // namespace brindlecam::sample
