#include "platform/x11/windows/PaintHold.h"

#include <QBackingStore>
#include <QEvent>
#include <QWindow>

#include <utility>

namespace brindlecam {

PaintHold::PaintHold(QWidget& widget, std::function<void()> mayPaint)
    : m_widget(&widget)
    , m_mayPaint(std::move(mayPaint))
{
    // By attribute: setUpdatesEnabled(true) paints everything anew.
    setPainting(false);
    widget.windowHandle()->installEventFilter(this);
}

PaintHold::~PaintHold()
{
    if (m_held && m_widget)
        setPainting(true);
}

void PaintHold::setPainting(bool on)
{
    m_held = !on;
    m_widget->setAttribute(Qt::WA_UpdatesDisabled, !on);
    // Also those that have come meanwhile: children take after their parent.
    for (QWidget* child : m_widget->findChildren<QWidget*>())
        child->setAttribute(Qt::WA_UpdatesDisabled, !on);
}

void PaintHold::paintAll()
{
    m_paintsAll = true;
}

void PaintHold::repaint(const QRect& part)
{
    m_lost += part;
    if (!m_held)
        paintLost();
}

bool PaintHold::eventFilter(QObject* watched, QEvent* event)
{
    // It also tells that a window has gone from the screen.
    if (event->type() == QEvent::Expose && m_widget && m_widget->windowHandle()->isExposed()) {
        if (!m_held)
            repaint(m_widget->rect()); // before Qt sends all of its copy
        else if (!std::exchange(m_ending, true))
            // Only after Qt has seen the event, for the same reason.
            QMetaObject::invokeMethod(this, &PaintHold::end, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void PaintHold::end()
{
    if (!m_widget)
        return;
    setPainting(true);
    if (!m_widget->isVisible())
        return;
    // Else Qt does it itself with the first painting, and paints everything because the size of
    // its copy has changed (QWidgetRepaintManager::paintAndFlush).
    if (QBackingStore* store = m_widget->backingStore())
        store->resize(m_widget->size());
    if (m_paintsAll)
        m_lost = m_widget->rect();
    paintLost();
    m_mayPaint();
}

// Each widget by itself: where a child covers its parent the parent is never painted.
void PaintHold::paintLost()
{
    const QRegion lost = std::exchange(m_lost, {});
    m_widget->update(lost);
    for (QWidget* child : m_widget->findChildren<QWidget*>()) {
        if (!child->isWindow() && child->isVisible())
            child->update(lost.translated(-child->mapTo(m_widget.data(), QPoint())));
    }
}

} // namespace brindlecam
