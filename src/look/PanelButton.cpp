#include "look/PanelButton.h"

#include "look/DevicePixels.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "preferences/Config.h"

#include <QKeyEvent>
#include <QPainter>

#include <cmath>

namespace brindlecam {

namespace {

/// Points, and how bright its ground is.
struct Measures {
    qreal fontSize;
    qreal paddingX;
    int height;
    qreal radius;
    float resting;
    float hovered;
    float pressed;
};

constexpr Measures kSmall{11, 8, 20, 5, 0.08F, 0.18F, 0.28F};
constexpr Measures kRegular{13, 12, 28, 6, 0.16F, 0.26F, 0.38F};
constexpr qreal kOutline = 2; // points
constexpr qreal kInset = 1;   // points, for the outline

const QColor kText = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.85F);

const Measures& measures(PanelButton::Size size)
{
    return size == PanelButton::Size::small ? kSmall : kRegular;
}

TextLine lineOf(const QAbstractButton& button, const Measures& measures)
{
    return {.text = button.text(), .font = InterfaceFont::medium(measures.fontSize)};
}

} // namespace

PanelButton::PanelButton(const QString& title, Size size, QWidget* parent)
    : QAbstractButton(parent)
    , m_size(size)
{
    setText(title);
    setAccessibleName(title);
    setFocusPolicy(Qt::TabFocus);
}

QSize PanelButton::sizeHint() const
{
    const Measures& has = measures(m_size);
    return {static_cast<int>(std::ceil(lineOf(*this, has).width() + 2 * has.paddingX)), has.height};
}

void PanelButton::paintEvent(QPaintEvent*)
{
    const Measures& has = measures(m_size);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    {
        const DevicePixels pixels(painter);
        const float white = isDown() ? has.pressed : underMouse() ? has.hovered : has.resting;
        painter.setBrush(QColor::fromRgbF(1.0F, 1.0F, 1.0F, white));
        painter.setPen(hasFocus() ? QPen(Config::leafGreen, pixels.lineWidth(kOutline))
                                  : QPen(Qt::NoPen));
        const QRect ground =
            pixels.nearest(QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset));
        painter.drawRoundedRect(ground, pixels.length(has.radius), pixels.length(has.radius));
    }
    const TextLine line = lineOf(*this, has);
    painter.setPen(kText);
    line.draw(painter,
              {(width() - line.width()) / 2, (height() - line.height()) / 2 + line.ascent()});
}

void PanelButton::enterEvent(QEnterEvent*)
{
    update();
}

void PanelButton::leaveEvent(QEvent*)
{
    update();
}

void PanelButton::keyPressEvent(QKeyEvent* event)
{
    // Return presses it, too; the rest is the panel's. One that is held does so once: what it opens
    // would get the next, as its answer.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat())
            click();
    } else if (event->key() == Qt::Key_Space) {
        QAbstractButton::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

} // namespace brindlecam
