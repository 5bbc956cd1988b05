#include "canvas/Loupe.h"

#include "base/Geometry.h"
#include "look/DevicePixels.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "preferences/Config.h"

#include <QPainter>
#include <QPainterPath>

namespace brindlecam::Loupe {

namespace {

constexpr qreal kSide = 125;  // points
constexpr int kPixels = 25;   // picture pixels across
constexpr qreal kOffset = 20; // from the pointer
constexpr qreal kRightMargin = 4;
constexpr qreal kBottomMargin = 24; // room for the label
constexpr qreal kRadius = 10;
constexpr qreal kBorderWidth = 1.5;
constexpr qreal kLabelGap = 8;
constexpr qreal kLabelFontSize = 10.5; // points
constexpr qreal kCoveredX = 6;
constexpr qreal kCoveredY = 26;

/// The loupe in device pixels; its cells need not be whole ones.
struct Glass {
    QRect outline;
    qreal cell = 1;
    QRect centreCell;

    Glass(const DevicePixels& pixels, const QRectF& loupe)
        : outline((loupe.topLeft() * pixels.length(1)).toPoint(),
                  QSize(qRound(pixels.length(kSide)), qRound(pixels.length(kSide))))
        , cell(outline.width() / static_cast<qreal>(kPixels))
        , centreCell(edge(kPixels / 2), edge(kPixels / 2 + 1) - QPoint(1, 1))
    {
    }
    /// The upper left corner of the cell in this row and column.
    [[nodiscard]] QPoint edge(int index) const
    {
        return outline.topLeft() + QPoint(qRound(index * cell), qRound(index * cell));
    }
};

void paintPixels(QPainter& painter, const Glass& glass, QPoint pixel, const QImage& image)
{
    const QRect wanted = source(pixel);
    const QRect visible = wanted.intersected(image.rect());
    painter.fillRect(glass.outline, Qt::black);
    if (visible.isEmpty())
        return;
    const QPointF offset = QPointF(visible.topLeft() - wanted.topLeft()) * glass.cell;
    const QRectF target(glass.outline.topLeft() + offset, QSizeF(visible.size()) * glass.cell);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(target, image, QRectF(visible));
}

void paintCrosshair(QPainter& painter, const DevicePixels& pixels, const Glass& glass)
{
    const QColor faint = QColor::fromRgbF(1, 1, 1, 0.35F);
    const int width = pixels.lineWidth(1);
    const QRect& outline = glass.outline;
    const QRect& cell = glass.centreCell;
    QRect across(outline.left(), cell.top() + (cell.height() - width) / 2, outline.width(), width);
    QRect down(cell.left() + (cell.width() - width) / 2, outline.top(), width, outline.height());
    for (const QRect& line : (QRegion(across) + down) - cell)
        painter.fillRect(line, faint);

    const int border = pixels.lineWidth(kBorderWidth);
    const int outside = (border + 1) / 2;
    const QRect outer = cell.adjusted(-outside, -outside, outside, outside);
    const QRect inner = outer.adjusted(border, border, -border, -border);
    for (const QRect& side : QRegion(outer) - inner)
        painter.fillRect(side, Config::leafGreen);
}

void paintGlass(QPainter& painter, const QRectF& loupe, QPoint pixel, const QImage& image)
{
    const DevicePixels pixels(painter);
    const Glass glass(pixels, loupe);
    const qreal radius = pixels.length(kRadius);
    QPainterPath shape;
    shape.addRoundedRect(glass.outline, radius, radius);
    painter.save();
    painter.setClipPath(shape, Qt::IntersectClip);
    paintPixels(painter, glass, pixel, image);
    paintCrosshair(painter, pixels, glass);
    painter.restore();

    const int border = pixels.lineWidth(kBorderWidth);
    const qreal half = border / 2.0;
    painter.setPen(QPen(Qt::white, border));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(glass.outline).adjusted(half, half, -half, -half), radius - half,
                            radius - half);
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

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintGlass(painter, loupe, pixel, image);
    paintLabel(painter, loupe, pixel);
    painter.restore();
}

} // namespace brindlecam::Loupe
