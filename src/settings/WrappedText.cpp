#include "settings/WrappedText.h"

namespace brindlecam {

WrappedText::WrappedText(const QString& text, int width, QWidget* parent)
    : QLabel(text, parent)
    , m_width(width)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize WrappedText::sizeHint() const
{
    return {m_width, heightForWidth(m_width)};
}

} // namespace brindlecam
