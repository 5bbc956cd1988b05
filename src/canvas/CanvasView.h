#pragma once

#include "canvas/DimView.h"
#include "canvas/Outcome.h"
#include "canvas/Selection.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace brindlecam {

class HintPicture;
class Prefs;

/// The canvas over one frozen screen: turns mouse and keys into changes of the selection, paints
/// only what changed, and reports what the user chose. Points of the screen as reals, origin
/// top-left; the widget itself may be up to a point larger than the screen at fractional scales.
class CanvasView final : public QWidget {
    Q_OBJECT

public:
    /// `image` and `dimmed` are the frozen screen in pixels, `size` its size in points.
    CanvasView(const Prefs& prefs, const QImage& image, const QImage& dimmed, QSizeF size,
               QWidget* parent);

    /// A selection drag has started here.
    std::function<void()> onBeginSelection;
    /// The user has ended the session.
    std::function<void(const Outcome&)> onFinish;
    /// Keys that end the session came here, but nothing is selected here.
    std::function<void()> onCopyElsewhere;
    std::function<void()> onSaveElsewhere;
    /// A new picture for the clipboard, while the session goes on.
    std::function<void(const Rendered&)> onAutoCopy;

    /// A painted hint that outlives the canvas; without one the hint is painted each time.
    void setHintPicture(const HintPicture& picture) { m_hintPicture = &picture; }

    /// Windows of this screen that a click takes, frontmost first, in points of this canvas.
    void setWindowRects(std::vector<QRectF> windows);

    [[nodiscard]] const Selection& selection() const { return m_selection; }
    /// Drops the selection: another screen has begun one.
    void clearSelection();

    /// The selected part of the frozen screen in its own pixels; none when nothing is selected. The
    /// same picture again as long as nothing has changed.
    [[nodiscard]] std::optional<Rendered> render();

    /// Ends the session with the picture on its way to the clipboard. Nothing when nothing is
    /// selected; so do the others.
    void copy();
    void saveDocument();
    void cancel();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    /// Everything that is painted, so that two of them tell what must be painted anew.
    struct Scene {
        QRectF hole;
        QRectF selection;
        std::optional<QRectF> outlinedWindow;
        std::optional<QPointF> loupePointer;
        bool hint = false;
    };

    [[nodiscard]] Scene scene() const;
    [[nodiscard]] QRegion difference(const Scene& before, const Scene& after) const;
    [[nodiscard]] bool showsLoupe() const;
    [[nodiscard]] QSize pixels(const QRectF& selection) const;
    [[nodiscard]] QPointF exactPosition(const QMouseEvent& event) const;
    [[nodiscard]] QPointF reach(QPointF point) const;
    void pointerMoved(QPointF point);
    void refresh();
    void autoCopy();

    const Prefs& m_prefs;
    const QSizeF m_size;
    const HintPicture* m_hintPicture = nullptr;
    DimView m_dimView;
    Selection m_selection;
    std::optional<QPointF> m_mouse;
    std::optional<Rendered> m_rendered; ///< of the present selection, once it was asked for
    Scene m_scene;
};

} // namespace brindlecam
