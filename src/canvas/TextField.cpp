#include "canvas/TextField.h"

#include "base/Call.h"
#include "base/Text.h"
#include "canvas/Annotation.h"
#include "canvas/CanvasCommand.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

// Points.
constexpr int kLeastWidth = 80;
constexpr int kAroundLine = 2; // what the field is higher than a line
// What QLineEdit keeps above the text; the mark's text begins right at the top of its box.
constexpr int kLineEditTop = 1;
// By how much QLineEdit's rectangle of a caret is wider than that, on each side.
constexpr int kAroundCaret = 5;
constexpr qreal kCaretWidth = 1.5;

/// The event's attributes, and one that takes the caret of QLineEdit away: that one inverts what it
/// stands on, ours has the text's colour.
QList<QInputMethodEvent::Attribute> withoutCaret(const QInputMethodEvent& event)
{
    constexpr int kInvisible = 0;
    auto attributes = event.attributes();
    auto start = static_cast<int>(event.preeditString().size());
    for (const QInputMethodEvent::Attribute& each : attributes) {
        if (each.type == QInputMethodEvent::Cursor)
            start = each.start;
    }
    attributes.append({QInputMethodEvent::Cursor, start, kInvisible});
    return attributes;
}

} // namespace

QRect TextField::place(QPointF point, const QRectF& selection)
{
    const int height = static_cast<int>(Annotation::textLineHeight()) + kAroundLine;
    const int left = static_cast<int>(std::lround(point.x()));
    const int top = static_cast<int>(std::lround(point.y() - height / 2.0));
    const int width = std::max(static_cast<int>(selection.right()) - left, kLeastWidth);
    return {left, top, width, height};
}

TextField::TextField(const QRect& place, const QColor& color, QWidget* canvas)
    : QLineEdit(canvas)
{
    setGeometry(place);
    setFont(Annotation::textFont());
    setFrame(false);
    // Where the mark will stand, also when it reads from right to left.
    setAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignTop);
    setTextMargins(0, -kLineEditTop, 0, 0);
    setColor(color);
    setDragEnabled(false);
    setAcceptDrops(false);
    setContextMenuPolicy(Qt::NoContextMenu); // it would be a window of its own
    setAccessibleName(brindlecam::text("Texto"));
    connect(this, &QLineEdit::cursorPositionChanged, this, &TextField::showCaret);
    connect(this, &QLineEdit::textChanged, this, &TextField::showCaret);
    QInputMethodEvent nothingComposed;
    TextField::inputMethodEvent(&nothingComposed);
}

QColor TextField::color() const
{
    return palette().color(QPalette::Text);
}

void TextField::setColor(const QColor& color)
{
    QPalette colors = palette();
    colors.setColor(QPalette::Text, color);
    colors.setColor(QPalette::Base, Qt::transparent);
    setPalette(colors);
}

QRect TextField::caret() const
{
    return cursorRect().adjusted(kAroundCaret, 0, 0, 0);
}

// A caret that has just moved is shown, whatever it did before.
void TextField::showCaret()
{
    if (!hasFocus())
        return;
    m_caretShown = true;
    if (const int flash = QGuiApplication::styleHints()->cursorFlashTime(); flash > 0)
        m_blink.start(flash / 2, this);
    update();
}

void TextField::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_blink.timerId()) {
        QLineEdit::timerEvent(event);
        return;
    }
    m_caretShown = !m_caretShown;
    update(caret());
}

void TextField::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (!m_caretShown)
        return;
    QPainter painter(this);
    const QRect place = caret();
    painter.fillRect(QRectF(place.left(), place.top(), kCaretWidth, place.height()), color());
}

void TextField::finishComposing()
{
    if (m_composing)
        QGuiApplication::inputMethod()->commit();
}

void TextField::escape()
{
    if (m_composing)
        dropComposition();
    else
        call(onCancel);
}

// Not every input method says that it has forgotten what it was asked to forget.
void TextField::dropComposition()
{
    QGuiApplication::inputMethod()->reset();
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(this, &nothing);
}

void TextField::keyPressEvent(QKeyEvent* event)
{
    const auto command = CanvasCommand::of(*event);
    const auto asks = [&command](CanvasCommand::Kind kind) {
        return command && command->kind == kind;
    };
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        if (!event->isAutoRepeat())
            call(onCommit);
        return;
    }
    if (asks(CanvasCommand::Kind::cancel)) {
        event->accept();
        if (!event->isAutoRepeat())
            escape();
        return;
    }
    const bool leaves = asks(CanvasCommand::Kind::copy) || asks(CanvasCommand::Kind::save);
    if (leaves && !hasSelectedText()) {
        event->ignore(); // the canvas takes it
        return;
    }
    // QLineEdit knows these by their Latin letters alone.
    if (asks(CanvasCommand::Kind::copy))
        copy();
    else if (asks(CanvasCommand::Kind::undo))
        undo();
    else if (asks(CanvasCommand::Kind::redo))
        redo();
    else
        QLineEdit::keyPressEvent(event);
    event->accept(); // also what means nothing here: the canvas would move the selection
}

void TextField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    showCaret();
}

void TextField::focusOutEvent(QFocusEvent* event)
{
    m_blink.stop();
    m_caretShown = false;
    QLineEdit::focusOutEvent(event);
    call(onCommit);
}

void TextField::inputMethodEvent(QInputMethodEvent* event)
{
    m_composing = !event->preeditString().isEmpty();
    QInputMethodEvent taken(event->preeditString(), withoutCaret(*event));
    taken.setCommitString(event->commitString(), event->replacementStart(),
                          event->replacementLength());
    QLineEdit::inputMethodEvent(&taken);
    event->setAccepted(taken.isAccepted());
}

} // namespace brindlecam
