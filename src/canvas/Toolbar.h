#pragma once

#include "base/Tool.h"

#include <QColor>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace brindlecam {

class BarButton;
class BarTip;
class BarView;
class PaletteView;
class Prefs;

/// The bars around a finished selection: tools beside it, actions under it, and the popups that
/// hang off the tools: the colour palette and one size popup per tool with sizes; and the tool tips
/// of all of these. Builds, places and shows them as children of the canvas; what a press does is
/// the canvas's business. Main thread; points of the canvas. It borrows canvas and settings, and
/// must go before the canvas.
/// A press on a bar leaves the keyboard focus alone only if the canvas doesn't take it by click
/// focus (Qt asks the parents of what is pressed): it has Qt::TabFocus and takes it when pressed.
class Toolbar final {
public:
    /// The buttons of the actions bar, left to right.
    enum class Action : std::uint8_t { text, pin, scroll, gif, copy, save, close };
    enum class Availability : std::uint8_t { disabled, enabled };

    /// Everything is built hidden, in pointer mode, with the first colour of the palette.
    Toolbar(QWidget& canvas, const Prefs& prefs);
    ~Toolbar();
    Toolbar(const Toolbar&) = delete;
    Toolbar& operator=(const Toolbar&) = delete;

    std::function<void()> onPointer;
    /// A tool's button was pressed, whether or not it is the chosen one.
    std::function<void(Tool)> onTool;
    /// A swatch of the palette was pressed; the palette is still open.
    std::function<void(const QColor&)> onPick;
    std::function<void()> onUndo;
    std::function<void()> onRedo;
    std::function<void(Action)> onAction;
    /// Slider, minus or plus of a size popup ask for a size; it may lie outside the tool's range.
    std::function<void(double size, Tool tool)> onSize;
    /// Slider, minus or plus of the palette ask for a marker opacity; it may lie outside the range.
    std::function<void(double opacity)> onOpacity;

    /// Which button is on; none: the pointer's.
    void setTool(std::optional<Tool> tool);
    /// The colour that the colour button and all sliders show.
    void setColor(const QColor& color);
    void setAvailable(Action action, Availability availability);

    /// Places bars and popups around a selection on a canvas of this size.
    void layOut(const QRectF& selection, QSizeF canvasSize);
    /// Shows the two bars, where the last layOut() has placed them.
    void show();
    /// Hides bars and popups. The focus, if it was in them, goes to the canvas.
    void hide();
    [[nodiscard]] bool isShown() const;

    /// Hides palette and size popups. The focus, if it was in one, goes to the button it hangs off.
    void hidePopups();
    /// Opens the palette, with the opacity as it is stored now, and closes the size popups; or
    /// closes it.
    void togglePalette();
    [[nodiscard]] bool paletteShown() const;
    /// Shows the tool's size popup, with the size as it is stored now, and hides all others. A tool
    /// without sizes only hides the others.
    void showSizePopup(Tool tool);
    [[nodiscard]] bool sizePopupShown(Tool tool) const;

    /// The stored value has changed: the sliders follow.
    void sizeChanged(Tool tool);
    void opacityChanged();

    /// Whether a bar or popup that is shown lies under this point.
    [[nodiscard]] bool isOver(QPointF point) const;
    /// Whether one of the controls has the keyboard focus.
    [[nodiscard]] bool holdsFocus() const;

private:
    /// A popup and the button of the tools bar that it hangs off.
    struct Popup {
        std::unique_ptr<PaletteView> view;
        BarButton* button = nullptr;
    };

    void buildTools();
    void buildActions();
    void buildPalette();
    void buildSizePopup(Tool tool);
    void chainFocus();
    void serveTips();
    void placePopups();
    [[nodiscard]] std::optional<QRect> tipPlace(const QWidget& control, QSize tip) const;
    void showOnly(const Popup* popup);
    [[nodiscard]] std::vector<const Popup*> popups() const;
    [[nodiscard]] const Popup* sizePopup(Tool tool) const;
    [[nodiscard]] std::vector<QWidget*> bars() const;
    [[nodiscard]] QWidget* focusWidget() const;

    QWidget& m_canvas;
    const Prefs& m_prefs;
    QRectF m_selection;
    QSizeF m_canvasSize;
    std::unique_ptr<BarView> m_tools;
    std::unique_ptr<BarView> m_actions;
    BarButton* m_pointerButton = nullptr;
    std::array<BarButton*, kAllTools.size()> m_toolButtons{};
    Popup m_palette;
    std::array<Popup, kAllTools.size()> m_sizes; ///< no view: a tool without sizes
    std::unique_ptr<BarTip> m_tip;
};

} // namespace brindlecam
