#include "WindowFrame.h"

#include "Theme.h"

#include <QPainter>

namespace brindlecam::sample {

namespace {

constexpr int kTitleHeight = 36;
constexpr int kButton = 10; // side of a sign
constexpr int kButtonStep = 30;
constexpr int kShadowReach = 26;
constexpr int kShadowDrop = 8;

void paintButtons(QPainter& painter, QSize size, const Theme& theme)
{
    painter.setPen(QPen(theme.muted, 1.4, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    QRectF sign(size.width() - 14 - kButton, (kTitleHeight - kButton) / 2.0, kButton, kButton);
    painter.drawLine(sign.topLeft(), sign.bottomRight());
    painter.drawLine(sign.topRight(), sign.bottomLeft());
    sign.translate(-kButtonStep, 0);
    painter.drawRect(sign.adjusted(0.5, 0.5, -0.5, -0.5));
    sign.translate(-kButtonStep, 0);
    painter.drawLine(QPointF(sign.left(), sign.center().y()),
                     QPointF(sign.right(), sign.center().y()));
}

} // namespace

QRect contentOf(QSize size)
{
    return {1, kTitleHeight, size.width() - 2, size.height() - kTitleHeight - 1};
}

void paintFrame(QPainter& painter, QSize size, const QString& title, const Theme& theme)
{
    const QRect whole(QPoint(), size);
    painter.fillRect(whole, theme.line);
    painter.fillRect(whole.adjusted(1, 1, -1, -1), theme.page);
    painter.fillRect(QRect(1, 1, size.width() - 2, kTitleHeight - 2), theme.title);
    painter.setFont(font(13, QFont::DemiBold));
    painter.setPen(theme.text);
    painter.drawText(QRect(0, 0, size.width(), kTitleHeight), Qt::AlignCenter, title);
    paintButtons(painter, size, theme);
}

void paintShadow(QPainter& painter, const QRect& window)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 5));
    for (int reach = kShadowReach; reach > 0; reach -= 1) {
        painter.drawRoundedRect(
            window.translated(0, kShadowDrop).adjusted(-reach, -reach, reach, reach), reach, reach);
    }
}

} // namespace brindlecam::sample
