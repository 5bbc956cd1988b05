#include "canvas/Loupe.h"

#include "app/Config.h"
#include "app/InterfaceFont.h"
#include "app/Pill.h"
#include "base/Geometry.h"

#include <QPainter>
#include <QPainterPath>

namespace brindlecam::Loupe {

namespace {

constexpr qreal kSide = 125; // points
constexpr int kPixels = 25;  // picture pixels across
constexpr qreal kCell = kSide / kPixels;
constexpr qreal kOffset = 20; // from the pointer
constexpr qreal kRightMargin = 4;
constexpr qreal kBottomMargin = 24; // room for the label
constexpr qreal kRadius = 10;
constexpr qreal kBorderWidth = 1.5;
constexpr qreal kLabelGap = 8;
constexpr qreal kLabelFontSize = 10.5; // points
constexpr qreal kCoveredX = 6;
constexpr qreal kCoveredY = 26;

void paintPixels(QPainter& painter, const QRectF& loupe, QPoint pixel, const QImage& image)
{
    const QRect wanted = source(pixel);
    const QRect visible = wanted.intersected(image.rect());
    painter.fillRect(loupe, Qt::black);
    if (visible.isEmpty())
        return;
    const QPointF offset = QPointF(visible.topLeft() - wanted.topLeft()) * kCell;
    const QRectF target(loupe.topLeft() + offset, QSizeF(visible.size()) * kCell);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(target, image, QRectF(visible));
}

void paintCrosshair(QPainter& painter, const QRectF& loupe, const QRectF& centreCell)
{
    const QPointF middle = loupe.center();
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.35F), 1));
    painter.drawLine(QPointF(loupe.left(), middle.y()), QPointF(centreCell.left(), middle.y()));
    painter.drawLine(QPointF(centreCell.right(), middle.y()), QPointF(loupe.right(), middle.y()));
    painter.drawLine(QPointF(middle.x(), loupe.top()), QPointF(middle.x(), centreCell.top()));
    painter.drawLine(QPointF(middle.x(), centreCell.bottom()), QPointF(middle.x(), loupe.bottom()));
    painter.setPen(QPen(Config::leafGreen, kBorderWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(centreCell);
}

void paintLabel(QPainter& painter, const QRectF& loupe, QPoint pixel)
{
    const Pill label{
        .text = QStringLiteral("%1, %2").arg(pixel.x()).arg(pixel.y()),
        .font = InterfaceFont::medium(kLabelFontSize),
        .paddingX = 6,
        .paddingY = 2,
        .alpha = 0.85,
        .radius = 4,
        .evenDigits = true,
    };
    label.paint(painter,
                {loupe.center().x() - label.size().width() / 2, loupe.bottom() + kLabelGap});
}

} // namespace

QRectF rect(QPointF pointer, QSizeF canvas)
{
    qreal x = pointer.x() + kOffset;
    if (x + kSide > canvas.width() - kRightMargin)
        x = pointer.x() - kOffset - kSide;
    qreal y = pointer.y() + kOffset;
    if (y + kSide > canvas.height() - kBottomMargin)
        y = pointer.y() - kOffset - kSide;
    return {x, y, kSide, kSide};
}

QRectF covered(const QRectF& loupe)
{
    return loupe.adjusted(-kCoveredX, -kCoveredY, kCoveredX, kCoveredY);
}

QRect source(QPoint pixel)
{
    constexpr int kReach = kPixels / 2;
    return {pixel - QPoint(kReach, kReach), QSize(kPixels, kPixels)};
}

void paint(QPainter& painter, QPointF pointer, const QImage& image, QSizeF canvas)
{
    const QRectF loupe = rect(pointer, canvas);
    const QPoint pixel = pixelAt(pointer, canvas, image.size());
    const QRectF centreCell(loupe.topLeft() + QPointF(kPixels / 2, kPixels / 2) * kCell,
                            QSizeF(kCell, kCell));

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(loupe, kRadius, kRadius);
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    paintPixels(painter, loupe, pixel, image);
    paintCrosshair(painter, loupe, centreCell);
    painter.restore();

    painter.setPen(QPen(Qt::white, kBorderWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(loupe.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    paintLabel(painter, loupe, pixel);
    painter.restore();
}

} // namespace brindlecam::Loupe
