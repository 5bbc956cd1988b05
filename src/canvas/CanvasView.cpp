#include "canvas/CanvasView.h"

#include "base/Call.h"
#include "base/Geometry.h"
#include "canvas/CanvasCursor.h"
#include "canvas/ExactPosition.h"
#include "look/WheelDelta.h"
#include "preferences/Prefs.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace brindlecam {

CanvasView::CanvasView(Prefs& prefs, TextRecognizer& recognizer, const Frozen& frozen,
                       QWidget* parent)
    : QWidget(parent)
    , m_prefs(prefs)
    , m_size(frozen.size)
    , m_painter(frozen.image, frozen.size)
    , m_model(frozen.image, frozen.size, frozen.nativeOrigin)
    , m_hudView(*this)
    , m_actions(m_model, m_hud, recognizer, *this)
    , m_tools(*this, {.editor = m_model.editor(), .prefs = prefs, .hud = m_hud})
    , m_typing(*this)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    // Not by clicks: Qt would bring it here when a bar is clicked while text is typed.
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    m_hud.onChange = [this] { refresh(); };
    m_actions.onBeforePicture = [this] { commitText(); };
    m_actions.onFinish = [this](const Outcome& outcome) { call(onFinish, outcome); };
    m_tools.onAction = [this](Toolbar::Action action) {
        m_tools.hidePopups();
        m_actions.perform(action);
    };
    m_tools.onUndo = [this] { undo(); };
    m_tools.onRedo = [this] { redo(); };
    m_tools.onBeforeTool = [this] { commitText(); };
    m_tools.onTool = [this] {
        updateCursor();
        refresh();
    };
    m_tools.onColor = [this](const QColor& color) {
        if (TextField* field = m_typing.field())
            field->setColor(color);
    };
    m_typing.onCommit = [this] { commitText(); };
    m_typing.onCancel = [this] { cancelText(); };
    refresh();
}

void CanvasView::setWindowRects(std::vector<QRectF> windows)
{
    m_model.selection().setWindows(std::move(windows));
}

void CanvasView::setUnavailable(std::vector<Toolbar::Action> actions)
{
    m_tools.setUnavailable(std::move(actions));
}

bool CanvasView::isInUse() const
{
    return !selection().isEmpty() || editor().hasMarksOrSteps();
}

void CanvasView::clearSelection()
{
    cancelText();
    m_hud.clear();
    m_model.clear();
    placeBars();
    refresh();
}

// What is shown.

void CanvasView::refresh()
{
    const auto now = CanvasScene::of(m_model, m_prefs.showLoupe() ? m_mouse : std::nullopt);
    update(m_painter.show(editor().annotations()) + m_painter.show(now));
    const bool overAll = selection().isEmpty() && isInUse();
    m_hudView.present(message(), overAll ? selection().canvas() : selection().rect(), m_size);
}

void CanvasView::paintAfterFirstFrame()
{
    update(m_painter.differenceToFirstFrame());
    // A selection may have been made and its bars shown meanwhile.
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isVisible())
            child->update();
    }
}

void CanvasView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const std::optional<Annotation>& current = editor().current();
    m_painter.paint(painter, event->region(), current ? &*current : nullptr);
}

// Nothing here looks different with the focus, and QWidget's own handlers paint all of the widget.
void CanvasView::focusInEvent(QFocusEvent*) {}

void CanvasView::focusOutEvent(QFocusEvent*) {}

void CanvasView::updateCursor()
{
    if (m_mouse)
        setCursor(m_tools.isOverBar(*m_mouse) ? Qt::ArrowCursor
                                              : cursorAt(selection(), editor(), *m_mouse));
}

// Mouse and wheel.

void CanvasView::pointerMoved(QPointF point, Qt::KeyboardModifiers modifiers)
{
    using Constraint = AnnotationEditor::Constraint;
    m_mouse = clamped(point, selection().canvas());
    const std::vector<QRectF> stale = m_model.moveTo(
        point, modifiers & Qt::ShiftModifier ? Constraint::eighthTurns : Constraint::none);
    update(m_painter.around(stale));
    if (!selection().isDragging())
        updateCursor();
    refresh();
}

void CanvasView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || selection().isDragging())
        return;
    const QPointF point = exactPosition(*event, *this);
    m_mouse = clamped(point, selection().canvas());
    commitText();
    m_tools.hidePopups();
    setFocus();
    if (selection().isEmpty() && onMayBeginSelection && !onMayBeginSelection())
        return;
    switch (m_model.press(point, m_tools.stroke())) {
    case CanvasModel::Press::selecting:
        call(onBeginSelection);
        break;
    case CanvasModel::Press::text:
        m_typing.begin(point, selection().rect(), editor().color());
        break;
    case CanvasModel::Press::handled:
        break;
    }
    if (editor().current())
        update(m_painter.around(editor().current()->paintedParts()));
    placeBars();
    refresh();
}

void CanvasView::mouseMoveEvent(QMouseEvent* event)
{
    pointerMoved(exactPosition(*event, *this), event->modifiers());
}

void CanvasView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !selection().isDragging())
        return;
    // No movement of its own: what the last one has left as it is, an edge beside the pointer or a
    // line that Shift held, stays so. But where we are late, Qt may have left the last one out: it
    // drops a movement while another is in its queue, even one that comes after the release.
    const QPointF point = exactPosition(*event, *this);
    if (m_mouse != clamped(point, selection().canvas()))
        pointerMoved(point, event->modifiers());
    endDrag();
}

void CanvasView::endDrag()
{
    const CanvasModel::Release released = m_model.release();
    update(m_painter.around(released.stale));
    placeBars();
    updateCursor();
    refresh();
    if (released.picture == CanvasModel::Picture::changed)
        autoCopy();
}

void CanvasView::enterEvent(QEnterEvent* event)
{
    pointerMoved(event->position(), event->modifiers());
}

void CanvasView::leaveEvent(QEvent*)
{
    if (selection().isDragging())
        return;
    m_mouse.reset();
    m_model.selection().leave();
    refresh();
}

void CanvasView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    if (isInUse())
        m_tools.turn(WheelDelta::of(*event).notches());
}

// Keys.

void CanvasView::keyPressEvent(QKeyEvent* event)
{
    const auto command = CanvasCommand::of(*event);
    if (!command || (event->isAutoRepeat() && !command->repeats())) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (!isInUse() && command->kind != CanvasCommand::Kind::cancel) {
        call(onCommandElsewhere, *command);
        return;
    }
    perform(*command);
}

void CanvasView::perform(const CanvasCommand& command)
{
    using Kind = CanvasCommand::Kind;
    // What is drawn with the button still down belongs to the picture, too.
    if (editor().current() && (command.kind == Kind::copy || command.kind == Kind::save))
        endDrag();
    switch (command.kind) {
    case Kind::copy:
        return m_actions.copy();
    case Kind::save:
        return m_actions.saveDocument();
    case Kind::cancel:
        if (!stepBack())
            m_actions.cancel();
        return;
    case Kind::undo:
        return undo();
    case Kind::redo:
        return redo();
    case Kind::deleteAnnotation:
        return deleteSelectedAnnotation();
    case Kind::move:
    case Kind::moveFarEdges:
        return moveByKey(command);
    }
}

bool CanvasView::stepBack()
{
    if (TextField* field = m_typing.field()) {
        field->escape();
        return true;
    }
    if (m_tools.holdsFocus()) {
        setFocus();
        return true;
    }
    return false;
}

void CanvasView::moveByKey(const CanvasCommand& command)
{
    if (selection().isEmpty() || selection().isDragging())
        return;
    if (command.kind == CanvasCommand::Kind::move)
        m_model.moveByKey(command.by);
    else
        m_model.moveFarEdges(command.by);
    placeBars();
    changed();
}

// Marks.

void CanvasView::commitText()
{
    const auto typed = m_typing.end();
    if (!typed)
        return;
    m_model.editor().addText(typed->text, typed->color, typed->box);
    changed();
}

void CanvasView::cancelText()
{
    m_typing.end();
}

void CanvasView::deleteSelectedAnnotation()
{
    if (m_model.editor().deleteSelected())
        changed();
}

void CanvasView::undo()
{
    if (TextField* field = m_typing.field())
        field->undo();
    else if (m_model.editor().undo())
        changed();
}

void CanvasView::redo()
{
    if (TextField* field = m_typing.field())
        field->redo();
    else if (m_model.editor().redo())
        changed();
}

void CanvasView::changed()
{
    updateCursor();
    refresh();
    autoCopy();
}

// Bars.

void CanvasView::placeBars()
{
    if (!selection().isEmpty() && !selection().isChanging())
        m_tools.showBars(selection().rect(), m_size);
    else
        m_tools.hideBars();
}

void CanvasView::autoCopy()
{
    if (!m_prefs.autoCopy() || m_typing.field() || !onAutoCopy)
        return;
    if (const auto picture = m_actions.render())
        onAutoCopy(*picture);
}

} // namespace brindlecam
