#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Promise.h"
#include "base/Geometry.h"
#include "canvas/Selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <variant>
#include <vector>

namespace brindlecam {

namespace {

constexpr int kMostPixels = 8192;
constexpr int kFewestPixels = 3;
constexpr int kMostWindows = 3;
constexpr qreal kBeyond = 50;     // points: how far outside of the canvas events come from
constexpr qreal kSame = 1e-6;     // points: what adding up reals may lose
constexpr qreal kLeastSide = 3;   // points
constexpr qreal kHandleReach = 7; // points
constexpr std::array kScales{1.0, 1.25, 1.5, 1.75, 2.0, 3.0, 1.1, 4.0 / 3};

bool isSame(qreal a, qreal b)
{
    return std::abs(a - b) <= kSame;
}

bool isWhole(qreal value, qreal end)
{
    return isSame(value, std::round(value)) || isSame(value, end);
}

bool isShort(const QRectF& rect)
{
    return rect.width() < kLeastSide - kSame || rect.height() < kLeastSide - kSame;
}

/// A screen with a selection that anything happens to.
class Story final {
public:
    Story(fuzz::FuzzInput& input, QSize pixels, QSizeF canvas)
        : m_input(input)
        , m_pixels(pixels)
        , m_canvas(canvas)
        , m_selection(canvas, pixelsPerPoint(canvas, pixels))
    {
    }

    void tell()
    {
        while (!m_input.isSpent()) {
            step();
            checkInside();
        }
    }

private:
    enum class Event {
        windows,
        hover,
        leave,
        press,
        drag,
        release,
        nudge,
        grow,
        clear,
        annotation
    };

    void step()
    {
        switch (static_cast<Event>(m_input.integer(0, 9))) {
        case Event::windows:
            return showWindows();
        case Event::hover:
            return m_selection.hover(place());
        case Event::leave:
            return m_selection.leave();
        case Event::press:
            return m_selection.isDragging() ? drag() : press();
        case Event::drag:
            return drag();
        case Event::release:
            return release();
        case Event::nudge:
            return m_selection.isDragging() ? drag() : nudge();
        case Event::grow:
            return m_selection.isDragging() ? drag() : grow();
        case Event::clear:
            m_selection.clear();
            BRINDLECAM_PROMISE(m_selection.isEmpty() && !m_selection.isDragging());
            return;
        case Event::annotation:
            return moveAnnotation();
        }
    }

    qreal along(qreal length)
    {
        const qreal at = m_input.real(-kBeyond, length + kBeyond);
        return m_input.flag() ? std::round(at) : at;
    }

    QPointF place()
    {
        const qreal x = along(m_canvas.width());
        const qreal y = along(m_canvas.height());
        return {x, y};
    }

    void showWindows()
    {
        m_windows.clear();
        for (int left = m_input.integer(0, kMostWindows); left > 0; --left) {
            const QPointF corner = place();
            m_windows.push_back(spanned(corner, place()) & m_selection.canvas());
        }
        m_selection.setWindows(m_windows);
    }

    void press()
    {
        const QPointF at = place();
        const bool marks = m_input.flag();
        const QRectF before = m_selection.rect();
        const auto found =
            m_selection.press(at, marks ? Selection::Drawn::something : Selection::Drawn::nothing);
        switch (found) {
        case Selection::Press::selecting:
            BRINDLECAM_PROMISE(before.isEmpty() || !marks);
            BRINDLECAM_PROMISE(m_selection.isEmpty() && m_selection.isChanging());
            return;
        case Selection::Press::resizing:
            m_least = marks ? before.size().boundedTo({kLeastSide, kLeastSide}) : QSizeF(0, 0);
            BRINDLECAM_PROMISE(m_selection.rect() == before && m_selection.isChanging());
            return;
        case Selection::Press::inside:
            BRINDLECAM_PROMISE(m_selection.rect() == before && !m_selection.isDragging());
            return beginInside(at);
        case Selection::Press::ignored:
            BRINDLECAM_PROMISE(marks);
            BRINDLECAM_PROMISE(m_selection.rect() == before && !m_selection.isDragging());
            return;
        }
    }

    void beginInside(QPointF at)
    {
        switch (m_input.integer(0, 3)) {
        case 0:
            return m_selection.startMovingAnnotation(at);
        case 1:
            return m_selection.startDrawing();
        case 2:
            return m_selection.startMoving(at);
        default:
            return; // a press on a text, say
        }
    }

    [[nodiscard]] QSize selectedPixels() const
    {
        return pixelRect(m_selection.rect(), m_canvas, m_pixels).size();
    }

    void drag()
    {
        const QRectF before = m_selection.rect();
        const QSize pixelsBefore = selectedPixels();
        m_selection.dragTo(place());
        const Drag& drag = m_selection.drag();
        const QRectF& after = m_selection.rect();
        if (std::holds_alternative<drag::Moving>(drag)) {
            BRINDLECAM_PROMISE(isSame(before.width(), after.width()));
            BRINDLECAM_PROMISE(isSame(before.height(), after.height()));
            BRINDLECAM_PROMISE(selectedPixels() == pixelsBefore);
        } else if (std::holds_alternative<drag::Resizing>(drag)) {
            BRINDLECAM_PROMISE(after.width() >= m_least.width() - kSame);
            BRINDLECAM_PROMISE(after.height() >= m_least.height() - kSame);
        } else if (!std::holds_alternative<drag::Selecting>(drag)) {
            BRINDLECAM_PROMISE(before == after);
        }
    }

    void release()
    {
        const Drag ended = m_selection.drag();
        const QRectF before = m_selection.rect();
        const QRectF settled = m_selection.settled();
        const QRectF window = m_selection.hoveredWindow().value_or(QRectF()) & m_selection.canvas();
        m_selection.release();
        BRINDLECAM_PROMISE(!m_selection.isDragging());
        const QRectF& after = m_selection.rect();
        const auto* resizing = std::get_if<drag::Resizing>(&ended);
        const bool mayClick = std::holds_alternative<drag::Selecting>(ended) ||
                              (resizing && !resizing->least && settled != resizing->original);
        const bool clicked = mayClick && isShort(settled);
        BRINDLECAM_PROMISE(after == (clicked ? window : settled));
        if (std::holds_alternative<drag::Selecting>(ended) && !clicked)
            checkWhole(after);
        else if (resizing && !clicked)
            checkResized(*resizing, after);
        else if (!clicked)
            BRINDLECAM_PROMISE(after == before);
        checkPixels();
    }

    void checkWhole(const QRectF& rect) const
    {
        BRINDLECAM_PROMISE(isWhole(rect.left(), 0) && isWhole(rect.top(), 0));
        BRINDLECAM_PROMISE(isWhole(rect.right(), m_canvas.width()));
        BRINDLECAM_PROMISE(isWhole(rect.bottom(), m_canvas.height()));
    }

    /// Each edge is whole or has not moved, maybe to the other side.
    void checkResized(const drag::Resizing& drag, const QRectF& rect) const
    {
        const auto fits = [](qreal edge, qreal from, qreal to, qreal end) {
            return isWhole(edge, end) || isSame(edge, from) || isSame(edge, to);
        };
        const QRectF& was = drag.original;
        const qreal right = m_canvas.width();
        const qreal bottom = m_canvas.height();
        BRINDLECAM_PROMISE(fits(rect.left(), was.left(), was.right(), right));
        BRINDLECAM_PROMISE(fits(rect.right(), was.left(), was.right(), right));
        BRINDLECAM_PROMISE(fits(rect.top(), was.top(), was.bottom(), bottom));
        BRINDLECAM_PROMISE(fits(rect.bottom(), was.top(), was.bottom(), bottom));
    }

    /// What is selected can be captured.
    void checkPixels() const
    {
        if (m_selection.isEmpty())
            return;
        const QRect taken = pixelRect(m_selection.rect(), m_canvas, m_pixels);
        BRINDLECAM_PROMISE(!taken.isEmpty() && QRect(QPoint(), m_pixels).contains(taken));
    }

    /// Arrow keys: whole points, which at fractional scales are no whole pixels.
    QPointF arrows()
    {
        const int reach = m_input.flag() ? kMostPixels : 10;
        const int x = m_input.integer(-reach, reach);
        const int y = m_input.integer(-reach, reach);
        return QPointF(x, y);
    }

    void nudge()
    {
        const QRectF before = m_selection.rect();
        const QPointF by = arrows();
        m_selection.moveBy(by);
        const QRectF& after = m_selection.rect();
        BRINDLECAM_PROMISE(before.size() == after.size());
        if (before.isEmpty())
            return;
        BRINDLECAM_PROMISE(goesThere(after.left() - before.left(), by.x()));
        BRINDLECAM_PROMISE(goesThere(after.top() - before.top(), by.y()));
        checkPixels();
    }

    /// Not the other way, and not farther than asked.
    static bool goesThere(qreal gone, qreal asked)
    {
        return asked < 0 ? gone <= kSame && gone >= asked - kSame
                         : gone >= -kSame && gone <= asked + kSame;
    }

    void grow()
    {
        const QRectF before = m_selection.rect();
        const QPointF by = arrows();
        m_selection.moveFarEdges(by);
        const QRectF& after = m_selection.rect();
        BRINDLECAM_PROMISE(after.topLeft() == before.topLeft());
        if (before.isEmpty())
            return;
        checkFarEdge(before.left(), before.right(), after.right(), by.x(), m_canvas.width());
        checkFarEdge(before.top(), before.bottom(), after.bottom(), by.y(), m_canvas.height());
        checkPixels();
    }

    static void checkFarEdge(qreal opposite, qreal before, qreal after, qreal by, qreal end)
    {
        if (by == 0)
            BRINDLECAM_PROMISE(isSame(before, after));
        else
            BRINDLECAM_PROMISE(after >= std::min(opposite + kLeastSide, end) - kSame);
        BRINDLECAM_PROMISE(isSame(before, after) || isWhole(after, end));
    }

    void moveAnnotation()
    {
        const QRectF before = m_selection.rect();
        const auto* moving = std::get_if<drag::MovingAnnotation>(&m_selection.drag());
        const bool noted = moving && moving->checkpointed;
        const bool isMoving = moving != nullptr;
        const auto move = m_selection.moveAnnotationTo(place());
        BRINDLECAM_PROMISE(isMoving || !move);
        BRINDLECAM_PROMISE(!move || (!move->by.isNull() && move->first == !noted));
        BRINDLECAM_PROMISE(m_selection.rect() == before);
    }

    void checkInside()
    {
        const QRectF& rect = m_selection.rect();
        const QRectF inside = m_selection.canvas().adjusted(-kSame, -kSame, kSame, kSame);
        BRINDLECAM_PROMISE(rect.width() >= 0 && rect.height() >= 0);
        BRINDLECAM_PROMISE(rect.left() >= inside.left() && rect.top() >= inside.top());
        BRINDLECAM_PROMISE(rect.right() <= inside.right() && rect.bottom() <= inside.bottom());
        const QRectF hovered = m_selection.hoveredWindow().value_or(QRectF());
        BRINDLECAM_PROMISE(m_selection.hole() == (rect.isEmpty() ? hovered : rect));
        const QPointF at = place();
        const auto handle = m_selection.handleAt(at);
        BRINDLECAM_PROMISE(!handle || !rect.isEmpty());
        if (handle) {
            const QPointF off = Selection::centre(*handle, rect) - at;
            BRINDLECAM_PROMISE(std::abs(off.x()) <= kHandleReach &&
                               std::abs(off.y()) <= kHandleReach);
        }
    }

    fuzz::FuzzInput& m_input;
    QSize m_pixels;
    QSizeF m_canvas;
    Selection m_selection;
    std::vector<QRectF> m_windows;
    QSizeF m_least; ///< where the edges of a drag stop
};

} // namespace

} // namespace brindlecam

/// The selection, whatever happens to it, at any scale: it stays inside the screen, a drag ends on
/// whole points, and what is moved keeps its size.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    const int width = input.integer(kFewestPixels, kMostPixels);
    const int height = input.integer(kFewestPixels, kMostPixels);
    const QSize pixels(width, height);
    const qreal scale = input.flag() ? input.oneOf(kScales) : input.integer(50, 500) / 100.0;
    Story(input, pixels, QSizeF(pixels) / scale).tell();
    return 0;
}
