#pragma once

#include "canvas/CanvasActions.h"
#include "canvas/CanvasCommand.h"
#include "canvas/CanvasModel.h"
#include "canvas/CanvasPainter.h"
#include "canvas/Hud.h"
#include "canvas/HudView.h"
#include "canvas/TextEntry.h"
#include "canvas/ToolControl.h"
#include "canvas/Toolbar.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace brindlecam {

class Prefs;
class TextRecognizer;

/// The canvas over one frozen screen: turns mouse, wheel and keys into changes of the selection and
/// of the marks on it, repaints only what changed, and reports what the user chose. Points of the
/// screen as reals, origin top-left; the widget itself may be up to a point larger than the screen
/// at fractional scales.
class CanvasView final : public QWidget {
    Q_OBJECT

public:
    /// One frozen screen.
    struct Frozen {
        QImage image;        ///< pixels
        QSizeF size;         ///< in points
        QPoint nativeOrigin; ///< its place on the desktop, in native pixels
    };

    /// Settings and recogniser outlive the canvas.
    CanvasView(Prefs& prefs, TextRecognizer& recognizer, const Frozen& frozen, QWidget* parent);

    /// Whether a selection may begin here: not where it would cost the marks on another screen.
    /// Empty: it always may.
    std::function<bool()> onMayBeginSelection;
    /// A selection drag has started here.
    std::function<void()> onBeginSelection;
    /// The user has ended the session.
    std::function<void(const Outcome&)> onFinish;
    /// A key of the session came here, but this canvas is not in use.
    std::function<void(const CanvasCommand&)> onCommandElsewhere;
    /// A new picture for the clipboard, while the session goes on.
    std::function<void(const Rendered&)> onAutoCopy;

    /// The frozen screen, in pixels.
    [[nodiscard]] const QImage& image() const { return m_painter.image(); }

    /// A painted hint that outlives the canvas; without one the hint is painted each time.
    void setHintPicture(const HintPicture& picture) { m_painter.setHintPicture(picture); }

    /// A frame of the dimmed screen with the hint is shown already: paints what is not so.
    void paintAfterFirstFrame();

    /// Windows of this screen that a click takes, frontmost first, in points of this canvas.
    void setWindowRects(std::vector<QRectF> windows);
    /// Actions of the bars that nobody is there to carry out; their buttons are disabled. Before
    /// the first selection.
    void setUnavailable(std::vector<Toolbar::Action> actions);

    [[nodiscard]] const Selection& selection() const { return m_model.selection(); }
    /// The transient message over the selection; empty without one.
    [[nodiscard]] QString message() const { return m_hud.text().value_or(QString()); }
    [[nodiscard]] const AnnotationEditor& editor() const { return m_model.editor(); }
    /// Whether the session's work is on this screen: a selection, or marks and steps without one.
    [[nodiscard]] bool isInUse() const;
    /// Drops the selection with all marks: another screen has begun one.
    void clearSelection();
    /// Makes a mark of the text being typed.
    void commitText();

    /// What a key asks for.
    void perform(const CanvasCommand& command);
    /// Escape short of the session's end: forgets a text being typed, else takes the focus out of
    /// the bars. False when there is neither.
    bool stepBack();

    /// What the session can end with.
    [[nodiscard]] CanvasActions& actions() { return m_actions; }

    /// One step back or forth: of what is typed while text is typed, else of the marks.
    void undo();
    void redo();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void pointerMoved(QPointF point, Qt::KeyboardModifiers modifiers);
    void moveByKey(const CanvasCommand& command);
    void deleteSelectedAnnotation();
    void cancelText();
    void endDrag();
    void placeBars();
    void updateCursor();
    void refresh();
    void changed();
    void autoCopy();

    Prefs& m_prefs;
    const QSizeF m_size;
    CanvasPainter m_painter;
    CanvasModel m_model;
    Hud m_hud;
    HudView m_hudView;
    CanvasActions m_actions;
    ToolControl m_tools;
    TextEntry m_typing;
    std::optional<QPointF> m_mouse;
};

} // namespace brindlecam
