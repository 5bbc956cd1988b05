#pragma once

#include <QImage>
#include <QPainter>
#include <QSize>
#include <QTest>

#include <functional>

namespace brindlecam::test {

inline void addCanvasScales()
{
    QTest::addColumn<qreal>("scale");
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0})
        QTest::addRow("%.2f", scale) << scale;
}

/// A black canvas of this size in points, so many pixels each, as a widget's painter paints on it.
inline QImage paintedCanvas(QSize points, qreal scale, const std::function<void(QPainter&)>& paint)
{
    QImage canvas((QSizeF(points) * scale).toSize(), QImage::Format_RGB32);
    canvas.setDevicePixelRatio(scale);
    canvas.fill(Qt::black);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return canvas;
}

} // namespace brindlecam::test
