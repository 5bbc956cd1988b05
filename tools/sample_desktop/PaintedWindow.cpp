#include "PaintedWindow.h"

#include <QPainter>

#include <utility>

namespace brindlecam::sample {

PaintedWindow::PaintedWindow(Scene scene)
    : m_scene(std::move(scene))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PaintedWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_scene(painter, size());
}

} // namespace brindlecam::sample
