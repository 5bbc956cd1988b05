#include "look/HouseStyle.h"

#include <QGuiApplication>
#include <QPainter>
#include <QStyleOptionMenuItem>

#include <algorithm>

namespace brindlecam {

namespace {

// Points.
constexpr int kMenuMargin = 5;
constexpr int kMenuRow = 28;
constexpr int kMenuSeparator = 11;
constexpr int kDialogMargin = 18;
constexpr int kDialogSpacing = 10;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 30;

} // namespace

HouseStyle::HouseStyle()
    : QProxyStyle(QStringLiteral("fusion"))
{
}

int HouseStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const
{
    switch (metric) {
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return kMenuMargin;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        // Only the dialog's own layout: those inside it have their places.
        return widget && widget->isWindow() ? kDialogMargin : 0;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return kDialogSpacing;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

// Fusion's own edge is as dark as a dark theme's ground.
void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_IndicatorCheckBox || !option->state.testFlag(State_Enabled))
        return;
    const bool showsFocus =
        option->state.testFlag(State_HasFocus) && option->state.testFlag(State_KeyboardFocusChange);
    constexpr qreal inset = 0.5; // the middle of a line of one point
    painter->save();
    painter->setPen(option->palette.color(showsFocus ? QPalette::Link : QPalette::PlaceholderText));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(option->rect).adjusted(inset, inset, -inset, -inset));
    painter->restore();
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const
{
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

QSize HouseStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const
{
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton)
        return result.expandedTo(QSize(kButtonWidth, kButtonHeight));
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type == CT_MenuItem && item) {
        const bool separator = item->menuItemType == QStyleOptionMenuItem::Separator;
        result.setHeight(separator ? kMenuSeparator : std::max(result.height(), kMenuRow));
    }
    return result;
}

QIcon HouseStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                               const QWidget* widget) const
{
    const Qt::LayoutDirection direction =
        option ? option->direction : QGuiApplication::layoutDirection();
    QIcon& icon = m_icons[{which, direction}];
    if (icon.isNull())
        icon = QProxyStyle::standardIcon(which, option, widget);
    return icon;
}

} // namespace brindlecam
