#include "canvas/Toolbar.h"

#include "base/Call.h"
#include "base/Text.h"
#include "canvas/BarButton.h"
#include "canvas/BarPlacement.h"
#include "canvas/BarTip.h"
#include "canvas/BarView.h"
#include "canvas/PaletteView.h"
#include "canvas/SliderTrack.h"
#include "canvas/TipPlacement.h"
#include "preferences/Config.h"
#include "preferences/Prefs.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kColorButtonSwatch = 18;
constexpr qreal kPaletteSwatch = 20;

constexpr SliderTrack::Range kOpacities{.lower = kMarkerOpacities.minimum,
                                        .upper = kMarkerOpacities.maximum,
                                        .step = kMarkerOpacities.step};

struct ActionRow {
    const char* symbol;
    const char* tooltip;
};

/// In the order of Toolbar::Action.
constexpr std::array<ActionRow, 7> kActions{{
    {"text.viewfinder", "Copiar el texto de la selección (OCR)"},
    {"pin", "Fijar flotando en pantalla"},
    {"arrow.up.and.down", "Captura con desplazamiento (páginas largas)"},
    {"record.circle", "Grabar esta área como GIF"},
    {"doc.on.doc", "Copiar (⌘C o Enter)"},
    {"square.and.arrow.down", "Guardar (⌘S)"},
    {"xmark", "Cerrar (Esc)"},
}};

/// What the colours of the palette are called by assistive technology, in its order.
constexpr std::array kColorNames{"Rojo", "Verde", "Amarillo", "Azul", "Negro", "Blanco"};
static_assert(kColorNames.size() == std::tuple_size_v<decltype(Config::palette)>);

std::unique_ptr<BarButton> button(const char* symbol, const char* tooltip,
                                  std::function<void()> onClick)
{
    auto made = std::make_unique<BarButton>(QString::fromLatin1(symbol), text(tooltip));
    made->onClick = std::move(onClick);
    return made;
}

std::size_t indexOf(Tool tool)
{
    return static_cast<std::size_t>(tool);
}

} // namespace

Toolbar::Toolbar(QWidget& canvas, const Prefs& prefs)
    : m_canvas(canvas)
    , m_prefs(prefs)
{
    buildTools();
    buildActions();
    buildPalette();
    for (const Tool tool : kAllTools) {
        if (sizes(tool))
            buildSizePopup(tool);
    }
    chainFocus();
    serveTips();
    setTool(std::nullopt);
    setColor(Config::palette.front());
    hide();
}

Toolbar::~Toolbar() = default;

void Toolbar::buildTools()
{
    std::vector<std::unique_ptr<BarButton>> buttons;
    const auto add = [&buttons](std::unique_ptr<BarButton> made) {
        buttons.push_back(std::move(made));
        return buttons.back().get();
    };
    m_pointerButton = add(button("cursorarrow", "Mover la selección o una anotación (⌫ la borra)",
                                 [this] { call(onPointer); }));
    for (const Tool tool : kAllTools) {
        BarButton* made = add(std::make_unique<BarButton>(symbolName(tool), tooltip(tool)));
        made->onClick = [this, tool] { call(onTool, tool); };
        m_toolButtons.at(indexOf(tool)) = made;
        m_sizes.at(indexOf(tool)).button = made;
    }
    m_palette.button = add(button("", "Color", [this] { togglePalette(); }));
    add(button("arrow.uturn.backward", "Deshacer (⌘Z)", [this] { call(onUndo); }));
    add(button("arrow.uturn.forward", "Rehacer (⇧⌘Z)", [this] { call(onRedo); }));
    m_tools = std::make_unique<BarView>(Qt::Vertical, std::move(buttons), &m_canvas);
    m_tools->setAccessibleName(text("Herramientas"));
}

void Toolbar::buildActions()
{
    std::vector<std::unique_ptr<BarButton>> buttons;
    for (std::size_t i = 0; i < kActions.size(); ++i) {
        const ActionRow& row = kActions.at(i);
        const auto action = static_cast<Action>(i);
        buttons.push_back(
            button(row.symbol, row.tooltip, [this, action] { call(onAction, action); }));
    }
    m_actions = std::make_unique<BarView>(Qt::Horizontal, std::move(buttons), &m_canvas);
    m_actions->setAccessibleName(text("Acciones"));
}

void Toolbar::buildPalette()
{
    PaletteView::Controls controls;
    for (std::size_t i = 0; i < kColorNames.size(); ++i) {
        const QColor color = Config::palette.at(i);
        auto swatch = button("", "", [this, color] { call(onPick, color); });
        swatch->setAccessibleName(text(kColorNames.at(i)));
        swatch->setSwatch(color, kPaletteSwatch);
        controls.swatches.push_back(std::move(swatch));
    }
    // Whole steps of 5 %, whatever is stored.
    const auto ask = [this](int steps) {
        const double perWhole = 1 / kOpacities.step;
        call(onOpacity, std::round(m_prefs.markerOpacity() * perWhole + steps) / perWhole);
    };
    controls.minus = button("minus", "Menos opacidad del marcador", [ask] { ask(-1); });
    controls.plus = button("plus", "Más opacidad del marcador", [ask] { ask(1); });
    controls.track = std::make_unique<SliderTrack>(SliderTrack::Shape::plain, kOpacities,
                                                   text("Opacidad del marcador"));
    controls.track->setValue(m_prefs.markerOpacity());
    controls.track->onChange = [this](double opacity) { call(onOpacity, opacity); };
    m_palette.view = std::make_unique<PaletteView>(std::move(controls), &m_canvas);
    m_palette.view->setAccessibleName(text("Colores"));
}

void Toolbar::buildSizePopup(Tool tool)
{
    const ToolSizes range = sizes(tool).value_or(ToolSizes{});
    const auto ask = [this, tool](double change) {
        call(onSize, m_prefs.size(tool) + change, tool);
    };
    const double step = range.step;
    PaletteView::Controls controls;
    controls.minus = button("minus", "Más fino / pequeño", [ask, step] { ask(-step); });
    controls.plus = button("plus", "Más grueso / grande", [ask, step] { ask(step); });
    controls.track = std::make_unique<SliderTrack>(
        SliderTrack::Shape::tapered, SliderTrack::Range{range.minimum, range.maximum, range.step},
        sizeLabel(tool).value_or(QString()));
    controls.track->setValue(m_prefs.size(tool));
    controls.track->onChange = [this, tool](double size) { call(onSize, size, tool); };
    auto view = std::make_unique<PaletteView>(std::move(controls), &m_canvas);
    view->setAccessibleName(text("Tamaños"));
    m_sizes.at(indexOf(tool)).view = std::move(view);
}

// From the canvas down the tools, then along the actions; what a popup holds comes after the button
// it hangs off.
void Toolbar::chainFocus()
{
    QWidget* last = &m_canvas;
    const auto chain = [&last](QWidget* next) {
        QWidget::setTabOrder(last, next);
        last = next;
    };
    for (BarButton* each : m_tools->buttons()) {
        chain(each);
        for (const Popup* popup : popups()) {
            if (popup->button != each)
                continue;
            for (QWidget* control : popup->view->controls())
                chain(control);
        }
    }
    for (BarButton* each : m_actions->buttons())
        chain(each);
}

void Toolbar::serveTips()
{
    m_tip = std::make_unique<BarTip>(
        m_canvas, [this](const QWidget& control, QSize tip) { return tipPlace(control, tip); });
    for (const BarView* bar : {m_tools.get(), m_actions.get()}) {
        for (BarButton* each : bar->buttons())
            m_tip->serve(*each);
    }
    for (const Popup* popup : popups()) {
        for (QWidget* each : popup->view->controls())
            m_tip->serve(*each);
    }
}

std::optional<QRect> Toolbar::tipPlace(const QWidget& control, QSize tip) const
{
    const QRect bar = control.parentWidget()->geometry();
    TipPlacement::Surroundings around{.control = control.geometry().translated(bar.topLeft()),
                                      .bar = bar,
                                      .shown = {},
                                      .selection = m_selection,
                                      .canvas = m_canvasSize};
    for (const QWidget* each : bars()) {
        if (!each->isHidden())
            around.shown.push_back(each->geometry());
    }
    return TipPlacement::place(tip, around);
}

void Toolbar::setTool(std::optional<Tool> tool)
{
    m_pointerButton->setOn(!tool);
    for (const Tool each : kAllTools)
        m_toolButtons.at(indexOf(each))->setOn(each == tool);
}

void Toolbar::setColor(const QColor& color)
{
    m_palette.button->setSwatch(color, kColorButtonSwatch);
    for (const Popup* popup : popups())
        popup->view->track().setColor(color);
}

void Toolbar::setAvailable(Action action, Availability availability)
{
    BarButton* button = m_actions->buttons().at(static_cast<std::size_t>(action));
    button->setEnabled(availability == Availability::enabled);
}

void Toolbar::layOut(const QRectF& selection, QSizeF canvasSize)
{
    m_selection = selection;
    m_canvasSize = canvasSize;
    m_tools->setGeometry(BarPlacement::toolsBar(selection, canvasSize, m_tools->size()));
    m_actions->setGeometry(BarPlacement::actionsBar(selection, canvasSize, m_actions->size()));
    placePopups();
}

void Toolbar::placePopups()
{
    for (const Popup* popup : popups()) {
        const int centreY = m_tools->y() + popup->button->y() + BarButton::kSide / 2;
        popup->view->setGeometry(
            BarPlacement::popup(m_tools->geometry(), centreY, popup->view->size(), m_canvasSize));
    }
}

void Toolbar::show()
{
    if (isShown())
        return; // raised again, they would cover an open popup
    for (BarView* bar : {m_tools.get(), m_actions.get()}) {
        bar->raise();
        bar->show();
    }
}

void Toolbar::hide()
{
    if (holdsFocus())
        m_canvas.setFocus();
    hidePopups();
    m_tools->hide();
    m_actions->hide();
}

bool Toolbar::isShown() const
{
    return !m_tools->isHidden();
}

void Toolbar::hidePopups()
{
    showOnly(nullptr);
}

void Toolbar::togglePalette()
{
    opacityChanged();
    placePopups();
    showOnly(paletteShown() ? nullptr : &m_palette);
}

bool Toolbar::paletteShown() const
{
    return !m_palette.view->isHidden();
}

void Toolbar::showSizePopup(Tool tool)
{
    sizeChanged(tool);
    placePopups();
    showOnly(sizePopup(tool));
}

bool Toolbar::sizePopupShown(Tool tool) const
{
    const Popup* popup = sizePopup(tool);
    return popup && !popup->view->isHidden();
}

void Toolbar::showOnly(const Popup* popup)
{
    for (const Popup* other : popups()) {
        if (other == popup)
            continue;
        // Before it goes: Qt would hand the focus to whatever comes next.
        if (const QWidget* focus = focusWidget(); focus && other->view->isAncestorOf(focus))
            other->button->setFocus();
        other->view->hide();
    }
    if (!popup)
        return;
    popup->view->raise();
    popup->view->show();
}

void Toolbar::sizeChanged(Tool tool)
{
    if (const Popup* popup = sizePopup(tool))
        popup->view->track().setValue(m_prefs.size(tool));
}

void Toolbar::opacityChanged()
{
    m_palette.view->track().setValue(m_prefs.markerOpacity());
}

bool Toolbar::isOver(QPointF point) const
{
    for (const QWidget* bar : bars()) {
        if (!bar->isHidden() && QRectF(bar->geometry()).contains(point))
            return true;
    }
    return false;
}

bool Toolbar::holdsFocus() const
{
    const QWidget* focus = focusWidget();
    if (!focus)
        return false;
    const std::vector<QWidget*> all = bars();
    return std::any_of(all.begin(), all.end(),
                       [focus](const QWidget* bar) { return bar->isAncestorOf(focus); });
}

QWidget* Toolbar::focusWidget() const
{
    return m_canvas.window()->focusWidget();
}

std::vector<const Toolbar::Popup*> Toolbar::popups() const
{
    std::vector<const Popup*> all{&m_palette};
    for (const Popup& popup : m_sizes) {
        if (popup.view)
            all.push_back(&popup);
    }
    return all;
}

const Toolbar::Popup* Toolbar::sizePopup(Tool tool) const
{
    const Popup& popup = m_sizes.at(indexOf(tool));
    return popup.view ? &popup : nullptr;
}

std::vector<QWidget*> Toolbar::bars() const
{
    std::vector<QWidget*> all{m_tools.get(), m_actions.get()};
    for (const Popup* popup : popups())
        all.push_back(popup->view.get());
    return all;
}

} // namespace brindlecam
