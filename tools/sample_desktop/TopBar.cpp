#include "TopBar.h"

#include "Theme.h"

#include <QPainter>

namespace brindlecam::sample {

namespace {

const QColor kGround(24, 28, 34);
const QColor kSign(226, 230, 236);

void paintBattery(QPainter& painter, QPointF at)
{
    painter.setPen(QPen(kSign, 1.2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(at, QSizeF(20, 11)), 2.5, 2.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kSign);
    painter.drawRect(QRectF(at + QPointF(2.5, 2.5), QSizeF(11, 6)));
    painter.drawRoundedRect(QRectF(at + QPointF(21.5, 3.5), QSizeF(2, 4)), 1, 1);
}

void paintNetwork(QPainter& painter, QPointF at)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(kSign);
    constexpr int kBars = 4;
    for (int i = 0; i < kBars; ++i) {
        const qreal height = 3 + 3 * i;
        painter.drawRect(QRectF(at.x() + 5 * i, at.y() + 12 - height, 3, height));
    }
}

void paintGrid(QPainter& painter, QPointF at)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(kSign);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column)
            painter.drawRoundedRect(QRectF(at + QPointF(7 * column, 7 * row), QSizeF(5, 5)), 1, 1);
    }
}

} // namespace

void paintTopBar(QPainter& painter, QSize size)
{
    const QRect whole(QPoint(), size);
    painter.fillRect(whole, kGround);
    const qreal middle = size.height() / 2.0;
    paintGrid(painter, {16, middle - 6});
    painter.setPen(kSign);
    painter.setFont(font(13, QFont::Medium));
    painter.drawText(whole.adjusted(40, 0, 0, 0), Qt::AlignVCenter, QStringLiteral("Escritorio"));
    painter.drawText(whole, Qt::AlignCenter, QStringLiteral("jueves 18 de junio   10:24"));
    paintBattery(painter, {size.width() - 42.0, middle - 5.5});
    paintNetwork(painter, {size.width() - 74.0, middle - 6});
}

} // namespace brindlecam::sample
