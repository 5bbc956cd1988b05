#pragma once

#include "base/Tool.h"
#include "canvas/AnnotationEditor.h"
#include "canvas/Toolbar.h"
#include "canvas/WheelSteps.h"

#include <QColor>
#include <QRectF>
#include <QSizeF>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace brindlecam {

class Hud;
class Prefs;

/// Tool, colour, sizes and opacity: what bars and wheel choose goes to the editor, to the settings
/// and back to what the bars show. Owns the bars, which it makes when they are first shown. Main
/// thread.
class ToolControl final {
public:
    /// What it works with; all of it outlives this.
    struct Subjects {
        AnnotationEditor& editor;
        Prefs& prefs;
        Hud& hud;
    };

    ToolControl(QWidget& canvas, const Subjects& subjects);
    ~ToolControl();

    /// Another tool is about to be chosen: typed text becomes a mark.
    std::function<void()> onBeforeTool;
    /// Another tool or the pointer has been chosen.
    std::function<void()> onTool;
    /// The marks to come have another colour now.
    std::function<void(const QColor&)> onColor;
    std::function<void()> onUndo;
    std::function<void()> onRedo;
    std::function<void(Toolbar::Action)> onAction;

    /// Actions that nobody is there to carry out. Before the bars are first shown.
    void setUnavailable(std::vector<Toolbar::Action> actions);

    /// Shows the bars around a selection (points) on a canvas of this size.
    void showBars(const QRectF& selection, QSizeF canvas);
    /// Hides bars and popups.
    void hideBars();
    void hidePopups();
    /// Whether a place of the canvas (points) lies under a bar or popup that is shown.
    [[nodiscard]] bool isOverBar(QPointF point) const;
    /// Whether one of the controls has the keyboard focus.
    [[nodiscard]] bool holdsFocus() const;

    /// How a mark of the chosen tool is drawn.
    [[nodiscard]] AnnotationEditor::Stroke stroke() const;

    /// A tool's button: chooses the tool, shows its sizes again, or goes back to pointer mode.
    void toggle(Tool tool);
    void choosePointer();
    void pick(const QColor& color);
    /// A size in points; rounded, kept inside the tool's range, stored and told.
    void setSize(double size, Tool tool);
    /// The marker's alpha; kept between 0.1 and 1, stored and told.
    void setOpacity(double opacity);
    /// The wheel has turned: size or opacity of the chosen tool, if it has one.
    void turn(qreal notches);

private:
    Toolbar& bars();
    void say(const QString& text);

    QWidget& m_canvas;
    Subjects m_subjects;
    WheelSteps m_steps;
    std::vector<Toolbar::Action> m_unavailable;
    std::unique_ptr<Toolbar> m_bars;
};

} // namespace brindlecam
