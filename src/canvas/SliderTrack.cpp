#include "canvas/SliderTrack.h"

#include "canvas/BarLook.h"
#include "canvas/SliderTrackAccess.h"
#include "look/DevicePixels.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kInset = 8; // of the track from both edges
constexpr qreal kPlainReach = 2;
constexpr qreal kPlainHeight = 4;
constexpr qreal kThinHalf = 0.75; // the wedge's height at its left end, half of it
constexpr qreal kThickHalf = 5;
constexpr qreal kKnobDiameter = 12;
constexpr qreal kPlainDot = 8;
constexpr qreal kLeastDot = 2;
constexpr qreal kDotGrowth = 7;

constexpr float kTrackAlpha = 0.22F;
constexpr float kHoverTrackAlpha = 0.32F;

constexpr double kSameValue = 0.0001;
/// Of a step: 0.45 / 0.05 must count as nine steps.
constexpr double kWholeStep = 1e-6;

/// Multiples of a decimal step without their binary dust: 0.15 instead of 0.15000000000000002.
double tidied(double value)
{
    constexpr double kDecimals = 1e6;
    return std::round(value * kDecimals) / kDecimals;
}

} // namespace

SliderTrack::SliderTrack(Shape shape, Range range, const QString& tooltip, QWidget* parent)
    : QWidget(parent)
    , m_shape(shape)
    , m_range(range)
    , m_value(range.lower)
{
    SliderTrackAccess::install();
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover); // repainted when the pointer comes and goes
    setCursor(Qt::ArrowCursor);
    setToolTip(tooltip);
    setAccessibleName(tooltip);
}

void SliderTrack::setValue(double value)
{
    m_value = std::clamp(value, m_range.lower, m_range.upper);
    update();
    SliderTrackAccess::announce(*this);
}

void SliderTrack::choose(double value)
{
    const double chosen = std::clamp(value, m_range.lower, m_range.upper);
    if (std::abs(chosen - m_value) <= kSameValue)
        return;
    setValue(chosen);
    if (onChange)
        onChange(chosen);
}

void SliderTrack::setColor(const QColor& color)
{
    m_color = color;
    update();
}

double SliderTrack::fraction() const
{
    return (m_value - m_range.lower) / (m_range.upper - m_range.lower);
}

qreal SliderTrack::knobX() const
{
    return kInset + (width() - 2 * kInset) * fraction();
}

double SliderTrack::valueAt(qreal x) const
{
    const double along = std::clamp((x - kInset) / (width() - 2 * kInset), 0.0, 1.0);
    const double raw = m_range.lower + (m_range.upper - m_range.lower) * along;
    return tidied(m_range.step * std::floor(raw / m_range.step + kWholeStep));
}

void SliderTrack::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragged = true;
    choose(valueAt(event->position().x()));
}

void SliderTrack::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragged)
        choose(valueAt(event->position().x()));
}

void SliderTrack::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_dragged = false;
    update();
}

void SliderTrack::hideEvent(QHideEvent*)
{
    m_dragged = false;
}

// The next multiple of the step, also from a value between two of them.
void SliderTrack::keyPressEvent(QKeyEvent* event)
{
    // With Shift or Ctrl they are the canvas's.
    if (event->modifiers() & ~Qt::KeypadModifier) {
        event->ignore();
        return;
    }
    const double steps = m_value / m_range.step;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        choose(tidied((std::ceil(steps - kWholeStep) - 1) * m_range.step));
        return;
    case Qt::Key_Right:
    case Qt::Key_Up:
        choose(tidied((std::floor(steps + kWholeStep) + 1) * m_range.step));
        return;
    case Qt::Key_Home:
        choose(m_range.lower);
        return;
    case Qt::Key_End:
        choose(m_range.upper);
        return;
    default:
        event->ignore();
    }
}

void SliderTrack::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintTrack(painter);
    paintKnob(painter);
    if (hasFocus())
        BarLook::paintFocusRing(painter, rect());
}

void SliderTrack::paintTrack(QPainter& painter) const
{
    const DevicePixels pixels(painter);
    const qreal mid = height() / 2.0;
    const qreal end = width() - kInset;
    QPainterPath track;
    if (m_shape == Shape::tapered) {
        const QRectF thin = pixels.nearest({kInset, mid - kThinHalf, end - kInset, 2 * kThinHalf});
        const QRectF thick =
            pixels.nearest({kInset, mid - kThickHalf, end - kInset, 2 * kThickHalf});
        track.addPolygon(
            QPolygonF({thin.topLeft(), thick.topRight(), thick.bottomRight(), thin.bottomLeft()}));
        track.closeSubpath();
    } else {
        const qreal radius = pixels.length(kPlainHeight / 2);
        track.addRoundedRect(pixels.nearest({kInset - kPlainReach, mid - kPlainHeight / 2,
                                             end - kInset + 2 * kPlainReach, kPlainHeight}),
                             radius, radius);
    }
    const bool lively = underMouse() || m_dragged;
    painter.fillPath(track, QColor::fromRgbF(1, 1, 1, lively ? kHoverTrackAlpha : kTrackAlpha));
    const QRectF done(0, 0, knobX(), height());
    painter.setClipRect(pixels.nearest(done), Qt::IntersectClip);
    painter.fillPath(track, m_color);
}

void SliderTrack::paintKnob(QPainter& painter) const
{
    const DevicePixels pixels(painter);
    QRectF place(0, 0, kKnobDiameter, kKnobDiameter);
    place.moveCenter({knobX(), height() / 2.0});
    const QRectF knob = pixels.nearest(place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);

    const bool tapered = m_shape == Shape::tapered;
    const qreal diameter = pixels.length(tapered ? kLeastDot + kDotGrowth * fraction() : kPlainDot);
    QRectF dot(0, 0, diameter, diameter);
    dot.moveCenter(knob.center());
    QColor preview = m_color;
    if (!tapered)
        preview.setAlphaF(static_cast<float>(m_value));
    painter.setBrush(preview);
    painter.drawEllipse(dot);
}

} // namespace brindlecam
