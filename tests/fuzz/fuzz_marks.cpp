#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Promise.h"
#include "base/Geometry.h"
#include "canvas/AnnotationList.h"
#include "canvas/MarkedPicture.h"
#include "unit/canvas/MarkedScreen.h"

#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace brindlecam {

namespace {

constexpr int kMostSteps = 8;
constexpr int kMostStrokePoints = 20;
constexpr int kMostText = 40;      // bytes
constexpr int kMostNumber = 12000; // step badges
constexpr qreal kOverTheEdge = 20; // points: how far marks reach beyond the screen
constexpr qreal kTextHeight = 24;  // points
constexpr QRgb kPaper = 0xff808080;
constexpr std::array kScales{1.0, 1.25, 1.5, 2.0, 1.1, 1.75, 4.0 / 3};

const QImage& frozenAt(qreal scale)
{
    static std::map<qreal, QImage> made;
    QImage& frozen = made[scale];
    if (frozen.isNull())
        frozen = test::frozenScreen(scale);
    return frozen;
}

/// A screen and its marks, which come, go and change as on a canvas.
class Story final {
public:
    Story(fuzz::FuzzInput& input, qreal scale)
        : m_input(input)
        , m_scale(scale)
        , m_frozen(frozenAt(scale))
        , m_picture(m_frozen, test::kMarkedPoints)
        , m_screen(m_frozen)
    {
    }

    void tell()
    {
        for (int left = kMostSteps; left > 0 && !m_input.isSpent(); --left) {
            step();
            BRINDLECAM_PROMISE(m_screen.follows(m_picture, m_list));
            checkPart();
        }
    }

private:
    enum class Event { add, move, remove, undo, redo, nothing };

    void step()
    {
        switch (static_cast<Event>(m_input.integer(0, 5))) {
        case Event::add:
            return add();
        case Event::move:
            return move();
        case Event::remove:
            if (!m_list.isEmpty())
                m_list.remove(anyMark());
            return;
        case Event::undo:
            m_list.undo();
            return;
        case Event::redo:
            m_list.redo();
            return;
        case Event::nothing:
            return;
        }
    }

    AnnotationList::Mark anyMark() { return m_input.oneOf(m_list.marks()); }

    qreal along(int length)
    {
        const qreal at = m_input.real(-kOverTheEdge, length + kOverTheEdge);
        return m_input.flag() ? std::round(at * m_scale) / m_scale : at;
    }

    QPointF place()
    {
        const qreal x = along(test::kMarkedPoints.width());
        const qreal y = along(test::kMarkedPoints.height());
        return {x, y};
    }

    Annotation begun()
    {
        const Tool tool = m_input.oneOf(kAllTools);
        const auto colour = static_cast<QRgb>(m_input.number(0, 0xffffff));
        Annotation mark(tool, QColor::fromRgb(colour), place());
        mark.setOpacity(m_input.real(kMarkerOpacities.minimum, kMarkerOpacities.maximum));
        mark.setNumber(m_input.integer(1, m_input.flag() ? kMostNumber : 99));
        if (const auto range = sizes(tool)) {
            const int steps = static_cast<int>((range->maximum - range->minimum) / range->step);
            mark.setLineWidth(range->minimum + m_input.integer(0, steps) * range->step);
        }
        return mark;
    }

    Annotation drawn()
    {
        Annotation mark = begun();
        switch (mark.tool()) {
        case Tool::pen:
        case Tool::marker:
            for (int left = m_input.integer(0, kMostStrokePoints); left > 0; --left)
                mark.append(place());
            break;
        case Tool::text:
            mark.setText(QString::fromUtf8(m_input.bytes(kMostText)), kTextHeight);
            break;
        case Tool::number:
            break;
        case Tool::line:
        case Tool::arrow:
        case Tool::rect:
        case Tool::pixelate:
            mark.setEnd(place());
            break;
        }
        return pixelated(std::move(mark));
    }

    [[nodiscard]] Annotation pixelated(Annotation mark) const
    {
        if (mark.tool() == Tool::pixelate) {
            const PixelsPerPoint ratio = pixelsPerPoint(test::kMarkedPoints, m_frozen.size());
            const QRect pixels = pixelRect(mark.rect(), test::kMarkedPoints, m_frozen.size());
            mark.setPixelated(Pixelation::of(m_frozen, pixels, Pixelation::cellPixels(ratio)));
        }
        return mark;
    }

    void add()
    {
        const Annotation mark = drawn();
        checkTouched(mark);
        checkHit(mark);
        m_list.append(mark);
    }

    void move()
    {
        if (m_list.isEmpty())
            return;
        const AnnotationList::Mark mark = anyMark();
        Annotation moved = *mark;
        const QPointF from = place();
        moved.translate((place() - from) / 4);
        m_list.checkpoint();
        m_list.replace(mark, pixelated(std::move(moved)));
    }

    /// Nothing is painted where a mark does not say so.
    void checkTouched(const Annotation& mark) const
    {
        QImage paper(m_frozen.size(), QImage::Format_RGB32);
        paper.fill(kPaper);
        QPainter painter(&paper);
        painter.scale(m_scale, m_scale);
        mark.draw(painter);
        painter.end();
        QRegion untouched(paper.rect());
        for (const QRectF& part : mark.paintedParts())
            untouched -= pixelRect(part, test::kMarkedPoints, m_frozen.size());
        for (const QRect& rect : untouched) {
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                const auto* row = reinterpret_cast<const QRgb*>(paper.constScanLine(y));
                BRINDLECAM_PROMISE(std::all_of(row + rect.left(), row + rect.right() + 1,
                                               [](QRgb pixel) { return pixel == kPaper; }));
            }
        }
        const QRectF around = mark.paintedBounds() | mark.bounds();
        BRINDLECAM_PROMISE(mark.paintedBounds() == around);
    }

    void checkHit(const Annotation& mark)
    {
        BRINDLECAM_PROMISE(mark.hitTest(mark.points().first()));
        const QPointF at = place();
        if (mark.hitTest(at)) {
            constexpr qreal kMostReach = 24; // points: half of the widest badge
            const QRectF near =
                mark.bounds().adjusted(-kMostReach, -kMostReach, kMostReach, kMostReach);
            BRINDLECAM_PROMISE(near.contains(at));
        }
    }

    /// Any part of the screen, and that part in a file.
    void checkPart()
    {
        const int x = m_input.integer(0, m_frozen.width() - 1);
        const int y = m_input.integer(0, m_frozen.height() - 1);
        const int width = m_input.integer(1, m_frozen.width());
        const QRect part =
            QRect(x, y, width, m_input.integer(1, m_frozen.height())) & m_frozen.rect();
        const QImage file = flattened(m_frozen, test::kMarkedPoints, part, m_list.marks());
        BRINDLECAM_PROMISE(file == m_picture.part(part));
        BRINDLECAM_PROMISE(file == m_screen.shown().copy(part));
    }

    fuzz::FuzzInput& m_input;
    qreal m_scale;
    const QImage& m_frozen;
    MarkedPicture m_picture;
    test::MarkedScreen m_screen;
    AnnotationList m_list;
};

} // namespace

} // namespace brindlecam

/// Marks that come, go and change at any scale: what the screen shows where it was told to repaint
/// is pixel by pixel what any file gets.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    const qreal scale = input.oneOf(kScales);
    Story(input, scale).tell();
    return 0;
}
