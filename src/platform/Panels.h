#pragma once

#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QString>

#include <functional>
#include <vector>

class QObject;
class QWidget;

namespace brindlecam {

class FirstFrame;

/// What a top-level widget is to the desktop: how high it lies, whether it takes the focus or the
/// pointer, whether the window manager touches it.
enum class PanelRole {
    overlay,      ///< above all, takes focus and all input
    toast,        ///< above windows, takes nothing
    countdown,    ///< like toast
    frame,        ///< above all, takes nothing
    sessionPanel, ///< above windows, all input, focus on demand
    drawer,       ///< like sessionPanel
    dialog,       ///< managed, stays on top: alerts, About, save panel
    window,       ///< managed, like other programs' windows: settings
};

/// One line of a menu.
struct MenuEntry {
    QString title;
    std::function<void()> run;
};

/// Turns widgets into the panels of this system. Main thread; rectangles are native pixels of the
/// global desktop.
class Panels {
public:
    virtual ~Panels() = default;

    /// Gives a widget its role. Once, before it is first shown; it may create the native window, so
    /// that a later show() only maps it. `native` is where that will be, so that the widget has its
    /// size by then; empty: nobody knows yet.
    virtual void assume(QWidget& widget, PanelRole role, const QRect& native) = 0;

    /// Shows the widget so that it covers exactly this rectangle. A dialog with an empty one is
    /// placed by the window manager, which may have its own mind about another one, too.
    virtual void show(QWidget& widget, const QRect& native) = 0;

    /// Shows the widget with this frame in it, faster than it could paint itself. `mayPaint` runs
    /// later and once: from then on the widget paints, and need paint only what differs from the
    /// frame. Where frames can't be shown, the widget has been told to paint all of itself by then.
    virtual void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame& frame,
                            std::function<void()> mayPaint) = 0;

    /// Takes the widget off the screen until it is shown again. What it was painted into goes back
    /// to the system.
    virtual void putAway(QWidget& widget) = 0;

    /// Moves and resizes a panel that was shown. The widget hears of its new size later, when the
    /// window manager has agreed.
    virtual void place(QWidget& widget, const QRect& native) = 0;

    /// Cuts a panel to these pixels of its own (native, origin in its top-left corner), shown or
    /// not; an empty region gives it back all of them. Where panels can't be cut they blend, so
    /// that they may paint nothing where there is to be nothing.
    virtual void cut(QWidget& widget, const QRegion& pixels) = 0;

    /// Gives the widget the keyboard focus now, whichever window has it. A dialog comes to the
    /// front for that, and back if it was minimised or left on another desktop.
    virtual void focus(QWidget& widget) = 0;

    /// If a click has just ended a session, another press in the same place reaches nobody until it
    /// is too late for a double click. Before the session's panels go.
    virtual void swallowDoubleClick() = 0;

    /// Opens a menu at this place of a panel or of a child of one, in points from its own corner,
    /// unless one is open over it already. It goes with the choice, with a press elsewhere, and
    /// with the widget.
    virtual void popUp(QWidget& over, QPoint place, std::vector<MenuEntry> entries) = 0;

    /// Fades the whole panel where windows blend: 1 opaque, 0 invisible. False when this system
    /// does not do that; then the panel has to paint itself fainter.
    [[nodiscard]] virtual bool fade(QWidget& widget, double strength) = 0;
};

} // namespace brindlecam
