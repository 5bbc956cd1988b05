#include "PagePainter.h"

#include "GlyphPainter.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace brindlecam::test::PagePainter {

namespace {

const std::array kAccents{QColor(220, 68, 55),  QColor(66, 133, 244), QColor(15, 157, 88),
                          QColor(244, 160, 0),  QColor(123, 31, 162), QColor(0, 131, 143),
                          QColor(198, 40, 101), QColor(84, 110, 122)};
const std::array kCodeColors{QColor(212, 212, 212), QColor(86, 156, 214), QColor(206, 145, 120),
                             QColor(78, 201, 176),  QColor(106, 153, 85), QColor(220, 220, 170)};

constexpr qreal kTitleBar = 36;
constexpr qreal kSidebar = 210;
constexpr qreal kTextHeight = 10;
constexpr qreal kLineHeight = 21;

template <typename Colors>
const QColor& picked(const Colors& colors, int index)
{
    return colors.at(static_cast<std::size_t>(index) % colors.size());
}

void paintShadow(QPainter& painter, const QRectF& window)
{
    constexpr int kReach = 12;
    painter.setPen(Qt::NoPen);
    for (int i = kReach; i > 0; --i) {
        painter.setBrush(QColor(0, 0, 0, 6));
        painter.drawRoundedRect(window.adjusted(-i, -i + 6, i, i + 6), 10 + i, 10 + i);
    }
}

void paintTitleBar(QPainter& painter, const QRectF& bar, GlyphPainter& glyphs, bool dark)
{
    QLinearGradient shine(bar.topLeft(), bar.bottomLeft());
    shine.setColorAt(0, dark ? QColor(70, 70, 74) : QColor(246, 246, 246));
    shine.setColorAt(1, dark ? QColor(50, 50, 54) : QColor(222, 222, 224));
    painter.fillRect(bar, shine);
    for (int i = 0; i < 3; ++i) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(picked(kAccents, i == 1 ? 3 : i));
        painter.drawEllipse(QPointF(bar.left() + 18 + i * 20, bar.center().y()), 6, 6);
    }
    const QColor ink = dark ? QColor(220, 220, 220) : QColor(60, 60, 60);
    glyphs.drawLine(painter, {bar.center().x() - 90, bar.center().y() + 4}, 180, 10, ink);
}

void paintIcon(QPainter& painter, const QRectF& box, const QColor& color)
{
    QLinearGradient fill(box.topLeft(), box.bottomRight());
    fill.setColorAt(0, color.lighter(130));
    fill.setColorAt(1, color.darker(115));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(box, 4, 4);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawArc(box.adjusted(4, 4, -4, -4), 40 * 16, 250 * 16);
}

void paintSidebar(QPainter& painter, const QRectF& area, GlyphPainter& glyphs)
{
    painter.fillRect(area, QColor(237, 239, 242));
    int row = 0;
    for (qreal y = area.top() + 14; y + 26 < area.bottom(); y += 32, ++row) {
        if (row == 2) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(66, 133, 244));
            painter.drawRoundedRect(QRectF(area.left() + 8, y - 4, area.width() - 16, 28), 6, 6);
        }
        paintIcon(painter, {area.left() + 16, y, 20, 20}, picked(kAccents, row * 3));
        glyphs.drawLine(painter, {area.left() + 46, y + 14}, area.width() - 70, kTextHeight,
                        row == 2 ? QColor(Qt::white) : QColor(50, 54, 60));
    }
}

void paintParagraphs(QPainter& painter, const QRectF& area, GlyphPainter& glyphs)
{
    int line = 0;
    for (qreal y = area.top() + 26; y < area.bottom() - 4; y += kLineHeight, ++line) {
        const int place = line % 9;
        if (place == 0) {
            glyphs.drawLine(painter, {area.left(), y}, area.width() * 0.4, 13, QColor(20, 20, 22));
        } else if (place < 8) {
            qreal x = area.left();
            const qreal end = area.left() + area.width() * (place == 7 ? 0.6 : 1);
            while (x + 40 < end) {
                const bool link = glyphs.next(14) == 0;
                x = glyphs.drawWord(painter, {x, y}, kTextHeight,
                                    link ? QColor(26, 90, 200) : QColor(40, 42, 46)) +
                    4;
            }
        }
    }
}

void paintTable(QPainter& painter, const QRectF& area, GlyphPainter& glyphs)
{
    constexpr qreal kRow = 28;
    constexpr qreal kColumn = 130;
    int row = 0;
    for (qreal y = area.top(); y + kRow <= area.bottom(); y += kRow, ++row) {
        painter.fillRect(QRectF(area.left(), y, area.width(), kRow),
                         row == 0       ? QColor(228, 231, 236)
                         : row % 2 == 0 ? QColor(248, 249, 250)
                                        : QColor(Qt::white));
        painter.fillRect(QRectF(area.left(), y + kRow - 1, area.width(), 1), QColor(218, 220, 224));
        for (qreal x = area.left() + 10; x + kColumn <= area.right(); x += kColumn) {
            glyphs.drawLine(painter, {x, y + 18}, kColumn - 30 - glyphs.next(40), kTextHeight,
                            row == 0 ? QColor(20, 22, 26) : QColor(60, 64, 67));
        }
    }
}

void paintLightWindow(QPainter& painter, const QRectF& window, GlyphPainter& glyphs)
{
    paintShadow(painter, window);
    painter.fillRect(window, Qt::white);
    const QRectF bar(window.topLeft(), QSizeF(window.width(), kTitleBar));
    paintTitleBar(painter, bar, glyphs, false);
    const QRectF body = window.adjusted(0, kTitleBar, 0, 0);
    paintSidebar(painter, {body.topLeft(), QSizeF(kSidebar, body.height())}, glyphs);
    const QRectF content = body.adjusted(kSidebar + 24, 0, -24, 0);
    const qreal split = content.height() * 0.6;
    paintParagraphs(painter, {content.topLeft(), QSizeF(content.width(), split)}, glyphs);
    paintTable(painter, content.adjusted(0, split + 10, 0, -16), glyphs);
}

void paintCodeWindow(QPainter& painter, const QRectF& window, GlyphPainter& glyphs)
{
    paintShadow(painter, window);
    painter.fillRect(window, QColor(30, 30, 30));
    paintTitleBar(painter, {window.topLeft(), QSizeF(window.width(), kTitleBar)}, glyphs, true);
    int indent = 0;
    for (qreal y = window.top() + kTitleBar + 22; y < window.bottom() - 6; y += kLineHeight) {
        glyphs.drawWord(painter, {window.left() + 12, y}, kTextHeight - 1, QColor(110, 118, 129));
        indent = std::clamp(indent + glyphs.next(3) - 1, 0, 5);
        qreal x = window.left() + 80 + indent * 26;
        const qreal end = std::min(window.right() - 30, x + 60 + glyphs.next(380));
        while (x + 50 < end) {
            x = glyphs.drawWord(painter, {x, y}, kTextHeight, picked(kCodeColors, glyphs.next(6))) +
                6;
        }
    }
}

void paintDock(QPainter& painter, const QSizeF& desk, GlyphPainter& glyphs)
{
    const QRectF panel(0, 0, desk.width(), 28);
    painter.fillRect(panel, QColor(24, 26, 32));
    glyphs.drawLine(painter, {16, 19}, 300, 10, QColor(230, 230, 230));
    glyphs.drawLine(painter, {desk.width() - 170, 19}, 160, 10, QColor(230, 230, 230));
    constexpr qreal kIcon = 44;
    qreal x = desk.width() / 2 - 6 * (kIcon + 10);
    for (int i = 0; i < 12; ++i, x += kIcon + 10)
        paintIcon(painter, {x, desk.height() - kIcon - 12, kIcon, kIcon}, picked(kAccents, i * 5));
}

// Value noise: random heights on a lattice, smoothly joined.
float latticeValue(int x, int y, std::uint32_t seed)
{
    std::uint32_t h = static_cast<std::uint32_t>(x) * 374761393U +
                      static_cast<std::uint32_t>(y) * 668265263U + seed * 2246822519U;
    h = (h ^ (h >> 13)) * 1274126177U;
    return static_cast<float>((h ^ (h >> 16)) & 0xffffU) / 65535.0F;
}

float smoothNoise(float x, float y, std::uint32_t seed)
{
    const int cellX = static_cast<int>(std::floor(x));
    const int cellY = static_cast<int>(std::floor(y));
    const auto eased = [](float t) { return t * t * (3 - 2 * t); };
    const float tx = eased(x - static_cast<float>(cellX));
    const float ty = eased(y - static_cast<float>(cellY));
    const float top =
        std::lerp(latticeValue(cellX, cellY, seed), latticeValue(cellX + 1, cellY, seed), tx);
    const float bottom = std::lerp(latticeValue(cellX, cellY + 1, seed),
                                   latticeValue(cellX + 1, cellY + 1, seed), tx);
    return std::lerp(top, bottom, ty);
}

float cloudNoise(float x, float y, std::uint32_t seed, int octaves)
{
    float sum = 0;
    float weight = 0.5F;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * smoothNoise(x, y, seed + static_cast<std::uint32_t>(i));
        x *= 2.03F;
        y *= 2.03F;
        weight *= 0.5F;
    }
    return sum;
}

struct Tone {
    float red;
    float green;
    float blue;
};

Tone mixed(const Tone& a, const Tone& b, float t)
{
    return {std::lerp(a.red, b.red, t), std::lerp(a.green, b.green, t),
            std::lerp(a.blue, b.blue, t)};
}

constexpr int kRidges = 4;

/// Colour of the landscape at a place; u runs along the height, so shapes keep their proportions.
Tone landscape(float u, float v, const std::array<float, kRidges>& ridges)
{
    const float clouds = std::clamp(cloudNoise(u * 2.5F, v * 5, 11, 5) * 2.2F - 0.8F, 0.0F, 1.0F);
    Tone tone = mixed(mixed({70, 120, 190}, {235, 205, 175}, std::min(1.0F, v * 1.8F)),
                      {245, 240, 236}, clouds);
    for (int i = 0; i < kRidges; ++i) {
        const float below = v - ridges.at(static_cast<std::size_t>(i));
        if (below < 0)
            continue;
        const float depth = static_cast<float>(i + 1) / kRidges;
        const float rough = cloudNoise(u * 30, v * 40, 50 + static_cast<std::uint32_t>(i), 4);
        const Tone rock = mixed({150, 165, 185}, {46, 62, 40}, depth);
        const float light = 0.65F + 0.7F * rough - below * 0.5F;
        const Tone lit{rock.red * light, rock.green * light, rock.blue * light};
        tone = mixed(tone, lit, std::min(1.0F, below * 400));
    }
    return tone;
}

std::array<float, kRidges> ridgesAt(float u)
{
    std::array<float, kRidges> ridges{};
    for (int i = 0; i < kRidges; ++i) {
        const float base = 0.38F + 0.15F * static_cast<float>(i);
        ridges.at(static_cast<std::size_t>(i)) =
            base + 0.25F * (cloudNoise(u * (1.5F + static_cast<float>(i)), 7.5F, 90, 6) - 0.5F);
    }
    return ridges;
}

int channel(float value, float grain)
{
    return std::clamp(static_cast<int>(std::lround(value + grain)), 0, 255);
}

} // namespace

QImage interfacePage(QSize size, qreal scale)
{
    QImage page(size, QImage::Format_RGB32);
    const QSizeF desk = QSizeF(size) / scale;
    QPainter painter(&page);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);

    QLinearGradient wallpaper(0, 0, 0, desk.height());
    wallpaper.setColorAt(0, QColor(52, 92, 128));
    wallpaper.setColorAt(1, QColor(32, 54, 82));
    painter.fillRect(QRectF(QPointF(), desk), wallpaper);

    GlyphPainter glyphs(2024);
    const qreal width = std::floor(desk.width());
    const qreal height = std::floor(desk.height());
    paintLightWindow(painter,
                     QRectF(QPointF(std::floor(width * 0.02), 44),
                            QPointF(std::floor(width * 0.70), height - 90)),
                     glyphs);
    paintCodeWindow(painter,
                    QRectF(QPointF(std::floor(width * 0.54), 110),
                           QPointF(std::floor(width * 0.98), height - 70)),
                    glyphs);
    paintDock(painter, desk, glyphs);
    return page;
}

QImage photoPage(QSize size)
{
    QImage page(size, QImage::Format_RGB32);
    const float perHeight = 1.0F / static_cast<float>(std::max(1, size.height()));
    std::vector<std::array<float, kRidges>> ridges;
    for (int x = 0; x < size.width(); ++x)
        ridges.push_back(ridgesAt(static_cast<float>(x) * perHeight));

    std::uint32_t state = 77;
    const auto grain = [&state] {
        state = state * 1664525U + 1013904223U;
        return (static_cast<float>(state >> 16) / 65535.0F - 0.5F) * 2.4F;
    };
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(page.scanLine(y));
        const float v = static_cast<float>(y) * perHeight;
        for (int x = 0; x < size.width(); ++x) {
            const Tone tone = landscape(static_cast<float>(x) * perHeight, v,
                                        ridges[static_cast<std::size_t>(x)]);
            const float bright = grain();
            row[x] = qRgb(channel(tone.red, bright), channel(tone.green, bright),
                          channel(tone.blue, bright));
        }
    }
    return page;
}

} // namespace brindlecam::test::PagePainter
