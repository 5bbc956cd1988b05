#include "canvas/CanvasView.h"

#include "app/Prefs.h"
#include "base/Geometry.h"
#include "canvas/CanvasCursor.h"
#include "canvas/Hint.h"
#include "canvas/HintPicture.h"
#include "canvas/Loupe.h"
#include "canvas/RepaintArea.h"
#include "canvas/SelectionFrame.h"
#include "canvas/SizeLabel.h"
#include "pictures/Crop.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace brindlecam {

namespace {

void call(const std::function<void()>& callback)
{
    if (callback)
        callback();
}

} // namespace

CanvasView::CanvasView(const Prefs& prefs, const QImage& image, const QImage& dimmed, QSizeF size,
                       QWidget* parent)
    : QWidget(parent)
    , m_prefs(prefs)
    , m_size(size)
    , m_dimView(image, dimmed, size)
    , m_selection(size)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    m_scene = scene();
}

void CanvasView::setWindowRects(std::vector<QRectF> windows)
{
    m_selection.setWindows(std::move(windows));
}

void CanvasView::clearSelection()
{
    m_selection.clear();
    refresh();
}

std::optional<Rendered> CanvasView::render()
{
    const QRectF rect =
        QRectF(roundedOutward(m_selection.rect())).intersected(m_selection.canvas());
    if (rect.width() < 1 || rect.height() < 1)
        return std::nullopt;
    if (!m_rendered) {
        const QImage& frozen = m_dimView.image();
        m_rendered =
            Rendered{croppedView(frozen, pixelRect(rect, m_size, frozen.size())), rect.size()};
    }
    return m_rendered->image().isNull() ? std::nullopt : m_rendered;
}

void CanvasView::copy()
{
    if (const auto picture = render(); picture && onFinish)
        onFinish(outcome::Copy{*picture});
}

void CanvasView::saveDocument()
{
    if (const auto picture = render(); picture && onFinish)
        onFinish(outcome::Save{*picture});
}

void CanvasView::cancel()
{
    if (onFinish)
        onFinish(outcome::Cancel{});
}

void CanvasView::autoCopy()
{
    if (!m_prefs.autoCopy() || !onAutoCopy)
        return;
    if (const auto picture = render())
        onAutoCopy(*picture);
}

bool CanvasView::showsLoupe() const
{
    if (!m_mouse || !m_prefs.showLoupe())
        return false;
    const Drag& drag = m_selection.drag();
    if (std::holds_alternative<drag::None>(drag))
        return m_selection.isEmpty();
    return !std::holds_alternative<drag::Moving>(drag);
}

CanvasView::Scene CanvasView::scene() const
{
    const bool choosing = m_selection.isEmpty() && !m_selection.isDragging();
    return {
        .hole = m_selection.hole(),
        .selection = m_selection.rect(),
        .outlinedWindow = choosing ? m_selection.hoveredWindow() : std::nullopt,
        .loupePointer = showsLoupe() ? m_mouse : std::nullopt,
        .hint = choosing,
    };
}

QSize CanvasView::pixels(const QRectF& selection) const
{
    const QImage& frozen = m_dimView.image();
    return pixelRect(selection, m_size, frozen.size()).intersected(frozen.rect()).size();
}

// What of each element the two scenes do not share must be painted anew, where it was and where it
// is.
QRegion CanvasView::difference(const Scene& before, const Scene& after) const
{
    const qreal scale = pixelsPerPoint(m_size, m_dimView.image().size()).x;
    QRegion stale;
    if (before.hole != after.hole)
        stale += repaintAreaBetween(before.hole, after.hole, scale);
    if (before.hint != after.hint)
        stale += repaintArea(Hint::rect(m_size), scale);
    for (const Scene* scene : {&before, &after}) {
        if (before.selection != after.selection && !scene->selection.isEmpty()) {
            const QRectF label = SizeLabel::rect(scene->selection, pixels(scene->selection));
            stale += SelectionFrame::covered(scene->selection, scale);
            stale += repaintArea(label, scale);
        }
        if (before.outlinedWindow != after.outlinedWindow && scene->outlinedWindow)
            stale += SelectionFrame::covered(*scene->outlinedWindow, scale);
        if (before.loupePointer != after.loupePointer && scene->loupePointer) {
            const QRectF loupe = Loupe::rect(*scene->loupePointer, m_size);
            stale += repaintArea(Loupe::covered(loupe), scale);
        }
    }
    return stale;
}

void CanvasView::refresh()
{
    const Scene before = std::exchange(m_scene, scene());
    m_dimView.setHole(m_scene.hole);
    if (before.selection != m_scene.selection)
        m_rendered.reset();
    update(difference(before, m_scene));
}

void CanvasView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    m_dimView.paint(painter, event->region());
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_scene.outlinedWindow)
        SelectionFrame::paintHoveredWindow(painter, *m_scene.outlinedWindow);
    if (m_scene.hint && m_hintPicture)
        m_hintPicture->paint(painter);
    else if (m_scene.hint)
        Hint::paint(painter, m_size);
    if (!m_scene.selection.isEmpty()) {
        SelectionFrame::paintBorder(painter, m_scene.selection);
        SelectionFrame::paintHandles(painter, m_selection);
        SizeLabel::paint(painter, m_scene.selection, pixels(m_scene.selection));
    }
    if (m_scene.loupePointer)
        Loupe::paint(painter, *m_scene.loupePointer, m_dimView.image(), m_size);
}

// A pointer names whole pixels, so the last one would leave the picture's last line out of reach.
// Half a pixel more, because a third of a point is no exact number.
QPointF CanvasView::reach(QPointF point) const
{
    constexpr qreal kLastPixel = 1.5;
    const PixelsPerPoint ratio = pixelsPerPoint(m_size, m_dimView.image().size());
    return {point.x() > m_size.width() - kLastPixel / ratio.x ? m_size.width() : point.x(),
            point.y() > m_size.height() - kLastPixel / ratio.y ? m_size.height() : point.y()};
}

// Qt rounds the position to whole points on its way to a child widget, which at fractional scales
// is not the pixel under the pointer. The window's position is exact.
QPointF CanvasView::exactPosition(const QMouseEvent& event) const
{
    return event.scenePosition() - QPointF(mapTo(window(), QPoint()));
}

void CanvasView::pointerMoved(QPointF point)
{
    m_mouse = clamped(point, m_selection.canvas());
    if (m_selection.isDragging())
        m_selection.dragTo(reach(point));
    else
        m_selection.hover(point);
    setCursor(cursorAt(m_selection, *m_mouse));
    refresh();
}

void CanvasView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_selection.isDragging())
        return;
    const QPointF point = exactPosition(*event);
    m_mouse = clamped(point, m_selection.canvas());
    switch (m_selection.press(reach(point), Selection::Marks::none)) {
    case Selection::Press::selecting:
        if (onBeginSelection)
            onBeginSelection();
        break;
    case Selection::Press::inside:
        m_selection.startMoving(point);
        break;
    case Selection::Press::resizing:
    case Selection::Press::ignored:
        break;
    }
    refresh();
}

void CanvasView::mouseMoveEvent(QMouseEvent* event)
{
    pointerMoved(exactPosition(*event));
}

void CanvasView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_selection.isDragging())
        return;
    pointerMoved(exactPosition(*event));
    m_selection.release();
    setCursor(cursorAt(m_selection, *m_mouse));
    refresh();
    autoCopy();
}

void CanvasView::enterEvent(QEnterEvent* event)
{
    pointerMoved(event->position());
}

void CanvasView::leaveEvent(QEvent*)
{
    if (m_selection.isDragging())
        return;
    m_mouse.reset();
    m_selection.leave();
    refresh();
}

// Nothing here looks different with the focus, and Qt would paint the whole screen anew.
void CanvasView::focusInEvent(QFocusEvent*) {}

void CanvasView::focusOutEvent(QFocusEvent*) {}

void CanvasView::keyPressEvent(QKeyEvent* event)
{
    const bool commanded = event->modifiers() & Qt::ControlModifier;
    const auto asks = [&](QKeySequence::StandardKey standard, Qt::Key letter) {
        return event->matches(standard) || (commanded && event->key() == letter);
    };
    const bool copies = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                        asks(QKeySequence::Copy, Qt::Key_C);
    const bool saves = asks(QKeySequence::Save, Qt::Key_S);
    const bool cancels = event->key() == Qt::Key_Escape;
    if (!copies && !saves && !cancels) {
        QWidget::keyPressEvent(event);
        return;
    }
    // A held key acts once: its repeats may be those of the press that began the session.
    if (event->isAutoRepeat())
        return;
    if (cancels)
        cancel();
    else if (m_selection.isEmpty())
        call(copies ? onCopyElsewhere : onSaveElsewhere);
    else if (copies)
        copy();
    else
        saveDocument();
}

} // namespace brindlecam
