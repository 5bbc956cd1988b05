#include "Scenes.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QStringList>

#include <array>
#include <cmath>

namespace brindlecam::sample {

namespace {

constexpr int kMargin = 28;

void paintBars(QPainter& painter, const QRectF& area)
{
    constexpr std::array kShares{0.42, 0.55, 0.5, 0.68, 0.74, 0.9};
    const qreal step = area.width() / kShares.size();
    painter.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < kShares.size(); ++i) {
        const qreal height = area.height() * kShares[i];
        const bool isLast = i + 1 == kShares.size();
        painter.setBrush(isLast ? QColor(46, 178, 77) : QColor(189, 214, 235));
        painter.drawRoundedRect(QRectF(area.left() + static_cast<qreal>(i) * step,
                                       area.bottom() - height, step * 0.7, height),
                                4, 4);
    }
    painter.setPen(QColor(200, 205, 210));
    painter.drawLine(area.bottomLeft(), area.bottomRight());
}

/// One ridge across the whole width; `height` is where it stands, as a share from the top.
QPainterPath ridge(QSize size, qreal height, qreal waves)
{
    QPainterPath path(QPointF(0, size.height()));
    for (int x = 0; x <= size.width(); x += 4) {
        const qreal at = static_cast<qreal>(x) / size.width();
        const qreal y = height + 0.06 * std::sin(at * waves) + 0.03 * std::sin(at * waves * 2.7);
        path.lineTo(x, y * size.height());
    }
    path.lineTo(size.width(), size.height());
    return path;
}

} // namespace

void paintWallpaper(QPainter& painter, QSize size)
{
    QLinearGradient gradient(0, 0, size.width(), size.height());
    gradient.setColorAt(0, QColor(28, 60, 84));
    gradient.setColorAt(1, QColor(56, 118, 108));
    painter.fillRect(QRect(QPoint(), size), gradient);
}

void paintReport(QPainter& painter, QSize size)
{
    painter.fillRect(QRect(QPoint(), size), Qt::white);
    QFont font = painter.font();
    font.setPixelSize(24);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(QColor(30, 34, 40));
    painter.drawText(kMargin, kMargin + 24, QStringLiteral("Visitas del semestre"));

    font.setPixelSize(14);
    font.setWeight(QFont::Normal);
    painter.setFont(font);
    painter.setPen(QColor(80, 86, 94));
    const QStringList lines{
        QStringLiteral("En junio llegaron 4 812 personas, más que en cualquier otro mes."),
        QStringLiteral("El catálogo nuevo explica dos tercios de la subida."),
        QStringLiteral("Pendiente: confirmar las cifras de abril con la tienda.")};
    int baseline = kMargin + 62;
    for (const QString& line : lines) {
        painter.drawText(kMargin, baseline, line);
        baseline += 24;
    }
    paintBars(painter, QRectF(kMargin, baseline, size.width() - 2 * kMargin,
                              size.height() - baseline - kMargin));
}

void paintLandscape(QPainter& painter, QSize size)
{
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(72, 120, 180));
    sky.setColorAt(0.6, QColor(246, 196, 150));
    painter.fillRect(QRect(QPoint(), size), sky);

    const QPointF sun(size.width() * 0.7, size.height() * 0.38);
    QRadialGradient glow(sun, size.width() * 0.3);
    glow.setColorAt(0, QColor(255, 244, 200));
    glow.setColorAt(1, QColor(255, 244, 200, 0));
    painter.fillRect(QRect(QPoint(), size), glow);

    painter.setPen(Qt::NoPen);
    constexpr int kRidges = 4;
    for (int i = 0; i < kRidges; ++i) {
        painter.setBrush(QColor(96 - 18 * i, 110 - 14 * i, 120 - 22 * i));
        painter.drawPath(ridge(size, 0.55 + 0.11 * i, 7 + 3 * i));
    }
}

} // namespace brindlecam::sample
