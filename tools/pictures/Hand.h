#pragma once

#include <QEvent>
#include <QPointF>
#include <QRectF>
#include <QString>

class QWidget;

namespace brindlecam {

class CanvasView;

namespace pictures {

/// A hand on one canvas: mouse, wheel and keys as events, whatever the real pointer does. Places in
/// points of the canvas; main thread.
class Hand final {
public:
    explicit Hand(CanvasView& canvas);

    void move(QPointF to);
    void press(QPointF at);
    void release();
    /// Presses, and moves on without a release.
    void drag(QPointF from, QPointF to);
    /// A whole drag.
    void draw(QPointF from, QPointF to);
    void click(QPointF at);
    /// Drags over an area from its upper left corner to the lower right one.
    void select(const QRectF& area);
    void turn(int notches);

    /// What the bars hold under this name, be it a button or a slider; the program ends without it.
    [[nodiscard]] QWidget& control(const QString& name);
    /// Presses the middle of a control, at a share of its width.
    void pressControl(const QString& name, qreal share = 0.5);
    /// Types into the widget with the focus.
    void type(const QString& text);
    void key(int key);

private:
    void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons);

    CanvasView& m_canvas;
    QPointF m_at;
    bool m_down = false;
};

} // namespace pictures

} // namespace brindlecam
