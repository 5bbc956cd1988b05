#include "long/DashedRing.h"

#include <QtGlobal>

#include <algorithm>

namespace brindlecam::DashedRing {

namespace {

// Points.
constexpr qreal kGap = 1; // to the captured rectangle
constexpr qreal kWidth = 2;
constexpr qreal kOn = 8;
constexpr qreal kOff = 5;

/// A part of the line along one side, or of a whole dash that bends around corners.
struct Span {
    int begin;
    int end;
};

/// The ring that the line covers. Dashes are counted along its middle, clockwise from the top-left
/// corner.
class Ring final {
public:
    Ring(const QRect& outer, int width)
        : m_outer(outer)
        , m_width(width)
        , m_across(outer.width() - width)
        , m_down(outer.height() - width)
    {
    }

    [[nodiscard]] int length() const { return 2 * (m_across + m_down); }

    void add(Span dash, std::vector<QRect>& strokes) const
    {
        int before = 0;
        for (const Side side : {Side::top, Side::right, Side::bottom, Side::left}) {
            const int length = isAcross(side) ? m_across : m_down;
            const Span on{std::max(dash.begin - before, 0), std::min(dash.end - before, length)};
            if (on.begin < on.end)
                strokes.push_back(pieceOf(side, on, length));
            before += length;
        }
    }

private:
    enum class Side { top, right, bottom, left };
    static bool isAcross(Side side) { return side == Side::top || side == Side::bottom; }
    static bool isForward(Side side) { return side == Side::top || side == Side::right; }

    /// What reaches a corner covers all of it.
    [[nodiscard]] QRect pieceOf(Side side, Span on, int length) const
    {
        const int half = m_width / 2;
        const Span way = isForward(side) ? on : Span{length - on.end, length - on.begin};
        const int begin = way.begin == 0 ? 0 : way.begin + half;
        const int end = way.end == length ? length + m_width : way.end + half;
        switch (side) {
        case Side::top:
            return {m_outer.x() + begin, m_outer.y(), end - begin, m_width};
        case Side::bottom:
            return {m_outer.x() + begin, m_outer.y() + m_down, end - begin, m_width};
        case Side::left:
            return {m_outer.x(), m_outer.y() + begin, m_width, end - begin};
        case Side::right:
            return {m_outer.x() + m_across, m_outer.y() + begin, m_width, end - begin};
        }
        Q_UNREACHABLE();
    }

    const QRect m_outer;
    const int m_width;
    const int m_across; ///< the middle of the line, from corner to corner
    const int m_down;
};

} // namespace

std::vector<QRect> strokesAround(const QRect& captured, qreal scale)
{
    const int width = std::max(1, qRound(kWidth * scale));
    const int reach = std::max(1, qRound(kGap * scale)) + width;
    const Ring ring(captured.adjusted(-reach, -reach, reach, reach), width);
    std::vector<QRect> strokes;
    for (int dash = 0;; ++dash) {
        const qreal begin = dash * (kOn + kOff) * scale;
        if (qRound(begin) >= ring.length())
            return strokes;
        ring.add({qRound(begin), std::min(qRound(begin + kOn * scale), ring.length())}, strokes);
    }
}

} // namespace brindlecam::DashedRing
