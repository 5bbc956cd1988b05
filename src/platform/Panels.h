#pragma once

#include <QImage>
#include <QRect>
#include <QRegion>

#include <functional>

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
    pin,          ///< managed, above, on every desktop; over full-screen windows, too
    dialog,       ///< managed, stays on top: alerts, About, save panel
};

/// Turns widgets into the panels of this system. Main thread; rectangles are native pixels of the
/// global desktop.
class Panels {
public:
    virtual ~Panels() = default;

    /// Gives a widget its role. Once, before it is first shown; it may create the native window, so
    /// that a later show() only maps it.
    virtual void assume(QWidget& widget, PanelRole role) = 0;

    /// Shows the widget so that it covers exactly this rectangle (dialogs: the window manager
    /// places them; pass an empty rectangle).
    virtual void show(QWidget& widget, const QRect& native) = 0;

    /// Shows the widget with this frame in it, faster than it could paint itself. `mayPaint` runs
    /// later and once: from then on the widget paints, and need paint only what differs from the
    /// frame. Where frames can't be shown, the widget has been told to paint all of itself by then.
    virtual void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame& frame,
                            std::function<void()> mayPaint) = 0;

    /// Moves and resizes a panel that was shown. The widget hears of its new size later, when the
    /// window manager has agreed.
    virtual void place(QWidget& widget, const QRect& native) = 0;

    /// Where the panel was put last, even if the window manager has not answered yet, or where
    /// somebody else has moved it since; empty before it was shown.
    [[nodiscard]] virtual QRect nativeRect(const QWidget& widget) const = 0;

    /// Cuts the panel to these pixels of its own, for the pointer, too; an empty region gives it
    /// back all of them. A widget's mask counts in points, which is too coarse for corners.
    virtual void setShape(QWidget& widget, const QRegion& pixels) = 0;

    /// Gives the widget the keyboard focus now, whichever window has it. A dialog comes to the
    /// front for that, and back if it was minimised or left on another desktop.
    virtual void focus(QWidget& widget) = 0;

    /// If a click has just ended a session, another press in the same place reaches nobody until it
    /// is too late for a double click. Before the session's panels go.
    virtual void swallowDoubleClick() = 0;

    /// Whether translucent panels blend with what lies beneath. When they don't, a panel is shaped
    /// by its mask and paints itself over `backdrop`.
    [[nodiscard]] virtual bool translucent() const = 0;

    /// Whether this panel blends now: one that was made while none did may never do so.
    [[nodiscard]] virtual bool translucent(const QWidget& widget) const = 0;

    /// `changed` runs when translucent() may have changed, for panels that are open then, as long
    /// as `context` lives.
    virtual void whenBlendingChanges(QObject* context, std::function<void()> changed) = 0;

    /// What the screen shows in this rectangle now, for panels that must paint their own backdrop;
    /// null when it can't be read.
    [[nodiscard]] virtual QImage backdrop(const QRect& native) = 0;

    /// Fades the whole panel: 1 opaque, 0 invisible. Only where translucent().
    virtual void setOpacity(QWidget& widget, double opacity) = 0;
};

} // namespace brindlecam
