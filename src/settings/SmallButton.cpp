#include "settings/SmallButton.h"

#include "look/InterfaceFont.h"

namespace brindlecam {

namespace {

// Points.
constexpr int kTitleSize = 11;
constexpr int kHeight = 24;
constexpr int kPadding = 11;

} // namespace

SmallButton::SmallButton(const QString& title, const QString& toolTip, QWidget* parent)
    : QPushButton(title, parent)
{
    setFont(InterfaceFont::regular(kTitleSize));
    setToolTip(toolTip);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SmallButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + 2 * kPadding, kHeight};
}

} // namespace brindlecam
