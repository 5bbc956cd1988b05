#include "Hand.h"

#include "canvas/CanvasView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace brindlecam::pictures {

namespace {

constexpr int kNotch = 120; // eighths of a degree

void sendMouse(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButton button,
               Qt::MouseButtons buttons)
{
    const QPointF inWindow = widget.mapTo(widget.window(), at);
    QMouseEvent event(type, at, inWindow, widget.mapToGlobal(at), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void sendKey(int key, const QString& text)
{
    QWidget* focus = QApplication::focusWidget();
    if (!focus)
        qFatal("no widget has the focus");
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(focus, &event);
    }
}

} // namespace

Hand::Hand(CanvasView& canvas)
    : m_canvas(canvas)
{
}

void Hand::send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    sendMouse(m_canvas, type, m_at, button, buttons);
}

void Hand::move(QPointF to)
{
    m_at = to;
    send(QEvent::MouseMove, Qt::NoButton, m_down ? Qt::LeftButton : Qt::NoButton);
}

void Hand::press(QPointF at)
{
    move(at);
    m_down = true;
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
}

void Hand::release()
{
    m_down = false;
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
}

void Hand::drag(QPointF from, QPointF to)
{
    press(from);
    move(to);
}

void Hand::draw(QPointF from, QPointF to)
{
    drag(from, to);
    release();
}

void Hand::click(QPointF at)
{
    press(at);
    release();
}

void Hand::select(const QRectF& area)
{
    draw(area.topLeft(), area.bottomRight());
}

void Hand::turn(int notches)
{
    QWheelEvent event(m_at, m_canvas.mapToGlobal(m_at), QPoint(), QPoint(0, notches * kNotch),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&m_canvas, &event);
}

QWidget& Hand::control(const QString& name)
{
    const auto children = m_canvas.findChildren<QWidget*>();
    for (QWidget* child : children) {
        if (child->isVisible() && child->accessibleName() == name)
            return *child;
    }
    qFatal("no control is called %s", qPrintable(name));
}

void Hand::pressControl(const QString& name, qreal share)
{
    QWidget& pressed = control(name);
    const QPointF at(pressed.width() * share, pressed.height() / 2.0);
    sendMouse(pressed, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    sendMouse(pressed, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
}

void Hand::type(const QString& text)
{
    sendKey(0, text); // at once: an emoji is more than one character
}

void Hand::key(int key)
{
    sendKey(key, QString());
}

} // namespace brindlecam::pictures
