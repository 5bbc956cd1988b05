#pragma once

#include "base/ScreenInfo.h"
#include "pictures/Rendered.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace brindlecam {

class Displays;
class Panels;
class PinnedView;

/// A capture that floats above the windows where it was taken: dragged by its picture, resized by
/// the wheel, closed by a double click. Main thread; rectangles are native pixels of the global
/// desktop. Borrows the ports.
class PinnedCapture final : public QWidget {
    Q_OBJECT

public:
    static constexpr qreal kCornerRadius = 6; ///< points

    /// A pin of this picture, not shown yet. Owned by whoever makes it; the ports outlive it.
    PinnedCapture(const Rendered& rendered, Panels& panels, Displays& displays);

    /// What its menu and a double click lead to; all three are filled before it is shown.
    std::function<void()> onCopy;
    std::function<void()> onSave;
    std::function<void()> onDismiss; ///< the pin is off the screen and may be deleted later

    /// Shows it exactly there, without taking the focus.
    void open(const QRect& native);

    /// Makes it wider by this factor of its present width, within its limits; the height follows,
    /// the centre stays.
    void zoomBy(qreal factor);

    /// A hand takes it at this place, in points from its own top-left corner; gives it the focus.
    void grip(QPointF place);
    /// The hand has moved there: native pixels of the desktop, which Qt may have rounded to points.
    /// The pin comes along once that is far enough to be no click; nothing happens without a grip.
    void follow(QPoint rounded);
    /// The hand lets go; the pin stays where it is.
    void letGo();

    /// Asks for its picture on the clipboard.
    void copyImage();
    /// Asks the user where its picture is to be saved.
    void saveImage();
    /// Takes it off the screen for good.
    void dismiss();

    /// Puts it where it can be seen when the displays have changed.
    void stayReachable();
    /// Blends its corners or cuts them off, when windows have begun or ceased to blend.
    void roundCorners();

    /// What it was made of, at its full size.
    [[nodiscard]] const Rendered& rendered() const { return m_rendered; }
    /// The screen it is on; none when there are no screens.
    [[nodiscard]] const std::optional<ScreenInfo>& onScreen() const { return m_screen; }

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// Where a hand has taken it.
    struct Drag {
        QPoint from;        ///< the pointer then
        QPoint last;        ///< the pointer now
        QRectF frame;       ///< the pin then, at the scale of the screen it is on now
        bool moves = false; ///< far enough that it is no click
    };

    [[nodiscard]] qreal scale() const { return m_screen ? m_screen->scale : 1; }
    [[nodiscard]] QPoint exact(QPoint pointer) const;
    void noticeForeignMoves();
    void moveTo(const QRectF& frame);
    void adaptTo(const std::optional<ScreenInfo>& screen, QPointF fixed);
    [[nodiscard]] QSize shownPixels() const;
    void shapeItself();
    void cut(QSize pixels);

    const Rendered m_rendered;
    Panels& m_panels;
    Displays& m_displays;
    PinnedView* m_view;         ///< a child
    QRectF m_frame;             ///< where it was put; reals, so that small steps add up
    bool m_moved = false;       ///< or resized, since it was opened
    std::optional<QSize> m_cut; ///< what the window was cut for, in pixels; empty: for nothing
    std::optional<ScreenInfo> m_screen;
    std::optional<Drag> m_drag;
};

} // namespace brindlecam
