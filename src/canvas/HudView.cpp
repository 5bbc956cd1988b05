#include "canvas/HudView.h"

#include "base/Geometry.h"
#include "canvas/Hud.h"

#include <QPainter>

namespace brindlecam {

HudView::HudView(QWidget& canvas)
    : QWidget(&canvas)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void HudView::present(const QString& text, const QRectF& selection, QSizeF canvasSize)
{
    if (text.isEmpty() || selection.isEmpty()) {
        hide();
        return;
    }
    if (!isHidden() && text == m_text && selection == m_selection && canvasSize == m_canvasSize)
        return;
    m_text = text;
    m_selection = selection;
    m_canvasSize = canvasSize;
    setGeometry(roundedOutward(Hud::rect(text, selection, canvasSize)));
    raise();
    show();
    update();
}

void HudView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-pos());
    Hud::paint(painter, m_text, m_selection, m_canvasSize);
}

} // namespace brindlecam
