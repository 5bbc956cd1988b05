#include "Landscape.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>

#include <array>
#include <cmath>

namespace brindlecam::sample {

namespace {

constexpr quint32 kSeed = 20; // the same picture every time

/// One row of mountains across the whole width. Heights are shares of the page, from the top.
struct Ridge {
    qreal height;
    qreal roughness;
    qreal waves;
    QColor top;
    QColor foot; ///< paler: the mist between the rows
};

qreal skyline(const Ridge& ridge, qreal at)
{
    qreal y = ridge.height;
    qreal strength = ridge.roughness;
    qreal waves = ridge.waves;
    for (int octave = 0; octave < 6; ++octave) {
        y += strength * std::sin(at * waves + 1.7 * octave + 3 * ridge.height);
        strength *= 0.52;
        waves *= 2.13;
    }
    return y;
}

void paintRidge(QPainter& painter, QSize size, const Ridge& ridge)
{
    QPainterPath path(QPointF(0, size.height()));
    for (int x = 0; x <= size.width() + 2; x += 2)
        path.lineTo(x, skyline(ridge, static_cast<qreal>(x) / size.width()) * size.height());
    path.lineTo(size.width() + 2, size.height());
    QLinearGradient shade(0, (ridge.height - 2 * ridge.roughness) * size.height(), 0,
                          (ridge.height + 0.2) * size.height());
    shade.setColorAt(0, ridge.top);
    shade.setColorAt(1, ridge.foot);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawPath(path);
}

void paintSky(QPainter& painter, QSize size, const QGradientStops& stops)
{
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setStops(stops);
    painter.fillRect(QRect(QPoint(), size), sky);
}

void paintGlow(QPainter& painter, QPointF centre, qreal radius, QColor colour)
{
    QRadialGradient glow(centre, radius);
    glow.setColorAt(0, colour);
    colour.setAlphaF(colour.alphaF() * 0.35F);
    glow.setColorAt(0.35, colour);
    colour.setAlpha(0);
    glow.setColorAt(1, colour);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(centre, radius, radius);
}

void paintDisc(QPainter& painter, QPointF centre, qreal radius, const QColor& colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(centre, radius, radius);
}

/// The lower part of the page as water: the upper one upside down, with bright ripples.
void paintLake(QPainter& painter, QSize size, qreal shore, const QColor& deep, const QColor& ripple)
{
    const QRectF water(0, shore * size.height(), size.width(), (1 - shore) * size.height());
    QLinearGradient shade(water.topLeft(), water.bottomLeft());
    QColor shallow = ripple;
    shallow.setAlphaF(0.55F);
    shade.setColorAt(0, shallow);
    shade.setColorAt(0.25, deep);
    shade.setColorAt(1, deep.darker(150));
    painter.fillRect(water, deep);
    painter.fillRect(water, shade);

    QRandomGenerator random(kSeed);
    for (int i = 0; i < 130; ++i) {
        const qreal depth = std::pow(random.generateDouble(), 1.6);
        const qreal length = (0.02 + 0.09 * random.generateDouble()) * size.width() * (0.4 + depth);
        const qreal x = random.generateDouble() * size.width() - length / 2;
        QColor colour = ripple;
        colour.setAlphaF(static_cast<float>(0.05 + 0.16 * random.generateDouble()));
        painter.setBrush(colour);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(
            QRectF(x, water.top() + depth * water.height(), length, 1 + 1.6 * depth), 1, 1);
    }
}

void paintStars(QPainter& painter, QSize size)
{
    QRandomGenerator random(kSeed);
    for (int i = 0; i < 220; ++i) {
        const QPointF place(random.generateDouble() * size.width(),
                            random.generateDouble() * size.height() * 0.6);
        const qreal radius = 0.4 + 0.8 * std::pow(random.generateDouble(), 3);
        QColor colour(235, 240, 255);
        colour.setAlphaF(static_cast<float>(0.25 + 0.7 * random.generateDouble()));
        paintDisc(painter, place, radius, colour);
    }
}

} // namespace

void paintDawn(QPainter& painter, QSize size)
{
    const QPointF sun(size.width() * 0.72, size.height() * 0.4);
    paintSky(painter, size,
             {{0, QColor(74, 124, 178)},
              {0.28, QColor(152, 181, 205)},
              {0.48, QColor(246, 205, 165)},
              {0.6, QColor(248, 178, 134)}});
    paintGlow(painter, sun, size.width() * 0.42, QColor(255, 232, 178, 210));
    paintDisc(painter, sun, size.height() * 0.032, QColor(255, 249, 226));
    const std::array ridges{
        Ridge{0.5, 0.050, 5, QColor(138, 150, 180), QColor(226, 190, 172)},
        Ridge{0.56, 0.055, 7, QColor(98, 118, 152), QColor(190, 172, 176)},
        Ridge{0.63, 0.045, 9, QColor(62, 88, 116), QColor(128, 140, 154)},
        Ridge{0.71, 0.030, 12, QColor(36, 62, 80), QColor(74, 98, 108)},
    };
    for (const Ridge& ridge : ridges)
        paintRidge(painter, size, ridge);
    paintLake(painter, size, 0.78, QColor(66, 100, 122), QColor(250, 208, 172));
    paintRidge(painter, size, {0.97, 0.020, 6, QColor(22, 40, 46), QColor(14, 28, 32)});
}

void paintNight(QPainter& painter, QSize size)
{
    const QPointF moon(size.width() * 0.74, size.height() * 0.2);
    paintSky(painter, size,
             {{0, QColor(10, 16, 36)}, {0.4, QColor(24, 40, 76)}, {0.62, QColor(58, 82, 118)}});
    paintStars(painter, size);
    paintGlow(painter, moon, size.width() * 0.2, QColor(190, 208, 240, 150));
    paintDisc(painter, moon, size.height() * 0.03, QColor(238, 241, 248));
    const std::array ridges{
        Ridge{0.5, 0.050, 5, QColor(40, 58, 92), QColor(64, 86, 120)},
        Ridge{0.56, 0.055, 7, QColor(29, 44, 74), QColor(50, 70, 100)},
        Ridge{0.63, 0.045, 9, QColor(20, 32, 56), QColor(36, 52, 78)},
        Ridge{0.71, 0.030, 12, QColor(13, 22, 40), QColor(24, 36, 56)},
    };
    for (const Ridge& ridge : ridges)
        paintRidge(painter, size, ridge);
    paintLake(painter, size, 0.78, QColor(20, 34, 58), QColor(128, 152, 192));
    paintRidge(painter, size, {0.97, 0.020, 6, QColor(7, 12, 20), QColor(4, 8, 14)});
}

void paintBeach(QPainter& painter, QSize size)
{
    paintSky(
        painter, size,
        {{0, QColor(66, 146, 214)}, {0.45, QColor(186, 222, 240)}, {1, QColor(220, 236, 240)}});
    paintGlow(painter, {size.width() * 0.24, size.height() * 0.16}, size.width() * 0.34,
              QColor(255, 250, 226, 220));
    paintRidge(painter, size, {0.44, 0.018, 6, QColor(94, 132, 128), QColor(132, 164, 160)});
    paintLake(painter, size, 0.46, QColor(38, 142, 168), QColor(226, 246, 246));
    painter.setPen(Qt::NoPen);
    paintRidge(painter, size, {0.765, 0.016, 4, QColor(250, 252, 250), QColor(232, 214, 176)});
    paintRidge(painter, size, {0.79, 0.016, 4, QColor(222, 200, 158), QColor(240, 222, 184)});

    // A parasol and its shadow.
    const QPointF foot(size.width() * 0.66, size.height() * 0.9);
    const qreal span = size.height() * 0.17;
    painter.setBrush(QColor(120, 96, 62, 70));
    painter.drawEllipse(foot + QPointF(span * 0.7, span * 0.08), span * 0.95, span * 0.16);
    painter.setPen(QPen(QColor(246, 246, 240), size.height() * 0.008));
    painter.drawLine(foot, foot - QPointF(0, span * 1.75));
    painter.setPen(Qt::NoPen);
    const QRectF shade(foot.x() - span, foot.y() - span * 2.35, span * 2, span * 1.7);
    constexpr int kStripes = 6;
    for (int i = 0; i < kStripes; ++i) {
        const qreal inset = i * span / kStripes;
        painter.setBrush(i % 2 == 0 ? QColor(206, 62, 54) : QColor(250, 244, 234));
        painter.drawPie(shade.adjusted(inset, 0, -inset, 0), 0, 180 * 16);
    }
}

} // namespace brindlecam::sample
