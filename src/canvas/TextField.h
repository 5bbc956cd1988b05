#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QLineEdit>
#include <QPointF>
#include <QRectF>

#include <functional>

namespace brindlecam {

/// The field in which a text mark is typed, right on the canvas: nothing of it shows but text and
/// caret, where and as the mark will stand. It decides which keys are its own: Return and Escape
/// end here, copy and save go on to the canvas while nothing in it is marked. Points of the canvas.
class TextField final : public QLineEdit {
    Q_OBJECT

public:
    /// Where the field of a text begun at this place stands, on whole points.
    [[nodiscard]] static QRect place(QPointF point, const QRectF& selection);

    /// A child of the canvas, which owns it.
    TextField(const QRect& place, const QColor& color, QWidget* canvas);

    /// The text is to become a mark: Return, or the focus has gone, which it also does when the
    /// owner closes the field.
    std::function<void()> onCommit;
    /// The text is to be forgotten: Escape.
    std::function<void()> onCancel;

    [[nodiscard]] QColor color() const;
    void setColor(const QColor& color);

    /// Takes what an input method is still composing into the text.
    void finishComposing();
    /// What Escape does: an input method's composition goes first, then the whole text.
    void escape();

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    [[nodiscard]] QRect caret() const;
    void showCaret();
    void dropComposition();

    QBasicTimer m_blink;
    bool m_caretShown = false;
    bool m_composing = false;
};

} // namespace brindlecam
