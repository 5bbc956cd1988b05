#include "drawer/DrawerButton.h"

#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "preferences/Config.h"

#include <QKeyEvent>
#include <QPainter>

#include <cmath>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kButtonFontSize = 11;
constexpr qreal kButtonPaddingX = 8;
constexpr int kButtonHeight = 20;
constexpr qreal kButtonRadius = 5;
constexpr qreal kButtonOutline = 2;

const QColor kButtonText = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.85F);
const QColor kRestingButton = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.08F);
const QColor kHoveredButton = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.18F);
const QColor kPressedButton = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.28F);

TextLine buttonLine(const QAbstractButton& button)
{
    return {.text = button.text(), .font = InterfaceFont::medium(kButtonFontSize)};
}

} // namespace

DrawerButton::DrawerButton(const QString& title, QWidget* parent)
    : QAbstractButton(parent)
{
    setText(title);
    setAccessibleName(title);
    setFocusPolicy(Qt::TabFocus); // a click leaves the tiles their keys
}

QSize DrawerButton::sizeHint() const
{
    return {static_cast<int>(std::ceil(buttonLine(*this).width() + 2 * kButtonPaddingX)),
            kButtonHeight};
}

void DrawerButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(isDown() ? kPressedButton : underMouse() ? kHoveredButton : kRestingButton);
    painter.setPen(hasFocus() ? QPen(Config::leafGreen, kButtonOutline) : QPen(Qt::NoPen));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kButtonRadius, kButtonRadius);
    const TextLine line = buttonLine(*this);
    painter.setPen(kButtonText);
    line.draw(painter,
              {(width() - line.width()) / 2, (height() - line.height()) / 2 + line.ascent()});
}

void DrawerButton::enterEvent(QEnterEvent*)
{
    update();
}

void DrawerButton::leaveEvent(QEvent*)
{
    update();
}

void DrawerButton::keyPressEvent(QKeyEvent* event)
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
