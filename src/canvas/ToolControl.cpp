#include "canvas/ToolControl.h"

#include "base/Call.h"
#include "base/Text.h"
#include "canvas/Hud.h"
#include "preferences/Prefs.h"

#include <chrono>
#include <cmath>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kMessageShown{1400};

} // namespace

ToolControl::ToolControl(QWidget& canvas, const Subjects& subjects)
    : m_canvas(canvas)
    , m_subjects(subjects)
{
}

ToolControl::~ToolControl() = default;

void ToolControl::setUnavailable(std::vector<Toolbar::Action> actions)
{
    m_unavailable = std::move(actions);
}

Toolbar& ToolControl::bars()
{
    if (m_bars)
        return *m_bars;
    m_bars = std::make_unique<Toolbar>(m_canvas, m_subjects.prefs);
    m_bars->onTool = [this](Tool tool) { toggle(tool); };
    m_bars->onPointer = [this] { choosePointer(); };
    m_bars->onPick = [this](const QColor& color) { pick(color); };
    m_bars->onSize = [this](double size, Tool tool) { setSize(size, tool); };
    m_bars->onOpacity = [this](double opacity) { setOpacity(opacity); };
    m_bars->onUndo = [this] { call(onUndo); };
    m_bars->onRedo = [this] { call(onRedo); };
    m_bars->onAction = [this](Toolbar::Action action) { call(onAction, action); };
    for (const Toolbar::Action action : m_unavailable)
        m_bars->setAvailable(action, Toolbar::Availability::disabled);
    m_bars->setTool(m_subjects.editor.tool());
    m_bars->setColor(m_subjects.editor.color());
    return *m_bars;
}

void ToolControl::showBars(const QRectF& selection, QSizeF canvas)
{
    bars().layOut(selection, canvas);
    bars().show();
}

void ToolControl::hideBars()
{
    if (m_bars)
        m_bars->hide();
}

void ToolControl::hidePopups()
{
    if (m_bars)
        m_bars->hidePopups();
}

bool ToolControl::isOverBar(QPointF point) const
{
    return m_bars && m_bars->isOver(point);
}

bool ToolControl::holdsFocus() const
{
    return m_bars && m_bars->holdsFocus();
}

AnnotationEditor::Stroke ToolControl::stroke() const
{
    const Prefs& prefs = m_subjects.prefs;
    return {.lineWidth = prefs.size(m_subjects.editor.tool().value_or(Tool::pen)),
            .opacity = prefs.markerOpacity()};
}

void ToolControl::toggle(Tool tool)
{
    const bool showsItsSizes = !sizes(tool) || bars().sizePopupShown(tool);
    if (m_subjects.editor.tool() == tool && showsItsSizes) {
        choosePointer();
        return;
    }
    call(onBeforeTool);
    m_subjects.editor.chooseTool(tool);
    bars().setTool(tool);
    bars().showSizePopup(tool);
    call(onTool);
}

void ToolControl::choosePointer()
{
    call(onBeforeTool);
    m_subjects.editor.choosePointer();
    bars().setTool(std::nullopt);
    bars().hidePopups();
    call(onTool);
}

void ToolControl::pick(const QColor& color)
{
    m_subjects.editor.setColor(color);
    bars().setColor(color);
    bars().hidePopups();
    call(onColor, color);
}

void ToolControl::setSize(double size, Tool tool)
{
    const std::optional<QString> label = sizeLabel(tool);
    if (!label)
        return;
    m_subjects.prefs.setSize(std::round(size), tool);
    bars().sizeChanged(tool);
    say(QStringLiteral("%1: %2 px").arg(*label).arg(std::lround(m_subjects.prefs.size(tool))));
}

void ToolControl::setOpacity(double opacity)
{
    m_subjects.prefs.setMarkerOpacity(opacity);
    bars().opacityChanged();
    const double stored = m_subjects.prefs.markerOpacity();
    say(text("Opacidad del marcador: %1 %").arg(std::lround(stored * 100)));
}

void ToolControl::turn(qreal notches)
{
    const std::optional<Tool> tool = m_subjects.editor.tool();
    const std::optional<ToolSizes> range = tool ? sizes(*tool) : std::nullopt;
    const int steps = range ? m_steps.add(notches) : 0;
    if (steps == 0)
        return;
    if (tool == Tool::marker)
        setOpacity(markerOpacityAfter(steps, m_subjects.prefs.markerOpacity()));
    else
        setSize(m_subjects.prefs.size(*tool) + steps * range->step, *tool);
}

void ToolControl::say(const QString& text)
{
    m_subjects.hud.show(text, Hud::Stay::timed, kMessageShown);
}

} // namespace brindlecam
