#pragma once

#include "base/ScreenInfo.h"
#include "pictures/Rendered.h"
#include "pins/PinPorts.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

class PinSurface;
class PinnedView;

/// A capture that floats above the windows where it was taken: dragged by its picture, resized by
/// the wheel, closed by a double click. Main thread; rectangles are native pixels of the global
/// desktop. Borrows the ports.
class PinnedCapture final : public QWidget {
    Q_OBJECT

public:
    static constexpr qreal kCornerRadius = 6; ///< points

    /// A pin of this picture, not shown yet. Owned by whoever makes it; the ports outlive it.
    PinnedCapture(const Rendered& rendered, const PinPorts& ports);
    ~PinnedCapture() override;

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
    /// The hand has moved. The pin comes along once that is far enough to be no click; nothing
    /// happens without a grip.
    void follow(const QMouseEvent& event);
    /// The hand lets go; the pin stays where it is.
    void letGo();

    /// Opens its menu there, in points from its own top-left corner.
    void openMenu(QPoint place);

    /// Asks for its picture on the clipboard.
    void copyImage();
    /// Asks the user where its picture is to be saved.
    void saveImage();
    /// Takes it off the screen for good.
    void dismiss();

    /// Puts it where it can be seen when the displays have changed.
    void stayReachable();

    /// What it was made of, at its full size.
    [[nodiscard]] const Rendered& rendered() const { return m_rendered; }
    /// Where a place on it, in points from its own top-left corner, is on the desktop.
    [[nodiscard]] QPoint onDesktop(QPointF place) const;
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
    void noticeForeignMoves();
    void moveTo(const QRectF& frame);
    void adaptTo(const std::optional<ScreenInfo>& screen, QPointF fixed);
    void fitView();

    const Rendered m_rendered;
    const PinPorts m_ports;
    PinnedView* m_view;                    ///< a child
    std::unique_ptr<PinSurface> m_surface; ///< the window
    QRectF m_frame;                        ///< where it was put; reals, so that small steps add up
    std::optional<ScreenInfo> m_screen;
    std::optional<Drag> m_drag;
};

} // namespace brindlecam
