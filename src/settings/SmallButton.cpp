#include "settings/SmallButton.h"

#include "look/InterfaceFont.h"

namespace brindlecam {

namespace {

// Points.
constexpr int kSmallTitleSize = 11;
constexpr int kSmallButtonHeight = 24;
constexpr int kSmallButtonPadding = 11;

} // namespace

SmallButton::SmallButton(const QString& title, const QString& toolTip, QWidget* parent)
    : QPushButton(title, parent)
{
    setFont(InterfaceFont::regular(kSmallTitleSize));
    setToolTip(toolTip);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SmallButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + 2 * kSmallButtonPadding, kSmallButtonHeight};
}

} // namespace brindlecam
