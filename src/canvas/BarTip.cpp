#include "canvas/BarTip.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

/// Whether the user turns to something else by it, whichever widget it goes to. The focus also
/// changes by an Escape that the system hands to the session past all widgets.
bool endsTips(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
        return true;
    default:
        return false;
    }
}

} // namespace

BarTip::BarTip(QWidget& canvas, Placing placing, std::chrono::milliseconds stay)
    : QWidget(&canvas)
    , m_placing(std::move(placing))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    m_end.setSingleShot(true);
    m_end.setInterval(stay);
    m_end.callOnTimeout([this] { dismiss(); });
}

void BarTip::serve(QWidget& control)
{
    m_served.push_back(&control);
    control.installEventFilter(this);
}

// Of the controls always; of everything only while a tip is shown, so that nothing else is slower
// for it.
bool BarTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto served = std::ranges::find(m_served, watched);
        if (served == m_served.end() || (*served)->toolTip().isEmpty())
            return false;
        present(**served);
        return true; // or QWidget would open Qt's window
    }
    const bool leaves = event->type() == QEvent::Leave || event->type() == QEvent::Hide;
    if (m_control && (endsTips(event->type()) || (leaves && watched == m_control)))
        dismiss();
    return false;
}

void BarTip::present(const QWidget& control)
{
    if (m_control == &control)
        return;
    m_pill = Pill::toolTip(control.toolTip());
    const std::optional<QRect> place = m_placing(control, m_pill.size().toSize());
    if (!place)
        return dismiss();
    m_control = &control;
    setGeometry(*place);
    raise();
    show();
    update();
    m_end.start();
    QCoreApplication::instance()->installEventFilter(this);
}

void BarTip::dismiss()
{
    QCoreApplication::instance()->removeEventFilter(this);
    m_control = nullptr;
    m_end.stop();
    hide();
}

void BarTip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_pill.paint(painter, {});
}

} // namespace brindlecam
