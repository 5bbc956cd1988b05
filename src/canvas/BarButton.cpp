#include "canvas/BarButton.h"

#include "canvas/BarLook.h"
#include "look/DevicePixels.h"
#include "look/Symbols.h"
#include "preferences/Config.h"

#include <QKeyEvent>
#include <QPainter>

#include <cmath>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kSymbolSide = 14;
constexpr qreal kSwatchInset = 1;
constexpr qreal kSwatchOutline = 1.5;

constexpr float kHoverAlpha = 0.1F;
constexpr float kDownAlpha = 0.2F;
constexpr int kOnHoverLighter = 110; // percent
constexpr int kOnDownDarker = 118;
constexpr qreal kDisabledOpacity = 0.35;
constexpr float kSwatchOutlineAlpha = 0.85F;

QColor white(float alpha)
{
    return QColor::fromRgbF(1, 1, 1, alpha);
}

/// A square of whole pixels in the middle, so that what is drawn in it is sharp.
QRect centredSquare(const DevicePixels& pixels, const QRectF& around, qreal side)
{
    const QRect outer = pixels.nearest(around);
    const int inner = static_cast<int>(std::lround(pixels.length(side)));
    return {outer.left() + (outer.width() - inner) / 2, outer.top() + (outer.height() - inner) / 2,
            inner, inner};
}

bool presses(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Select;
}

} // namespace

BarButton::BarButton(QString symbol, const QString& tooltip, QWidget* parent)
    : QAbstractButton(parent)
    , m_symbol(std::move(symbol))
{
    setFixedSize(kSide, kSide);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover); // repainted when the pointer comes and goes
    setToolTip(tooltip);
    setAccessibleName(tooltip);
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onClick)
            onClick();
    });
}

void BarButton::setOn(bool on)
{
    setCheckable(true);
    setChecked(on);
}

void BarButton::setSwatch(const QColor& color, qreal diameter)
{
    m_swatch = Swatch{color, diameter};
    update();
}

std::optional<QColor> BarButton::swatch() const
{
    return m_swatch ? std::optional(m_swatch->color) : std::nullopt;
}

// Enter copies and Escape goes back wherever the focus is, and arrows move the selection: only what
// presses a button is for the button.
void BarButton::keyPressEvent(QKeyEvent* event)
{
    if (presses(*event))
        QAbstractButton::keyPressEvent(event);
    else
        event->ignore();
}

void BarButton::keyReleaseEvent(QKeyEvent* event)
{
    if (presses(*event))
        QAbstractButton::keyReleaseEvent(event);
    else
        event->ignore();
}

void BarButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackground(painter);
    painter.setOpacity(isEnabled() ? 1 : kDisabledOpacity);
    if (m_swatch)
        paintSwatch(painter, *m_swatch);
    else
        paintSymbol(painter);
    painter.setOpacity(1);
    if (hasFocus())
        BarLook::paintFocusRing(painter, rect());
}

void BarButton::paintBackground(QPainter& painter) const
{
    const bool hovered = isEnabled() && underMouse();
    QColor color = Qt::transparent;
    if (isOn())
        color = isDown()  ? Config::leafGreen.darker(kOnDownDarker)
                : hovered ? Config::leafGreen.lighter(kOnHoverLighter)
                          : Config::leafGreen;
    else if (isDown() || hovered)
        color = white(isDown() ? kDownAlpha : kHoverAlpha);
    const DevicePixels pixels(painter);
    const qreal radius = pixels.length(BarLook::kControlRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(pixels.nearest(rect()), radius, radius);
}

void BarButton::paintSymbol(QPainter& painter) const
{
    const DevicePixels pixels(painter);
    Symbols::draw(painter, m_symbol, centredSquare(pixels, rect(), kSymbolSide), Qt::white);
}

void BarButton::paintSwatch(QPainter& painter, const Swatch& swatch) const
{
    const DevicePixels pixels(painter);
    const qreal inset = pixels.length(kSwatchInset);
    painter.setPen(QPen(white(kSwatchOutlineAlpha), pixels.length(kSwatchOutline)));
    painter.setBrush(swatch.color);
    painter.drawEllipse(QRectF(centredSquare(pixels, rect(), swatch.diameter))
                            .adjusted(inset, inset, -inset, -inset));
}

} // namespace brindlecam
