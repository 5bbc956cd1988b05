#include "canvas/Hud.h"

#include "look/InterfaceFont.h"
#include "look/Pill.h"

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kFontSize = 13;
constexpr qreal kMargin = 4; // from the edges of the canvas

Pill pill(const QString& text)
{
    return {
        .text = text,
        .font = InterfaceFont::medium(kFontSize),
        .paddingX = 14,
        .paddingY = 8,
        .alpha = 0.88,
        .radius = 8,
        .evenDigits = true,
    };
}

/// `start`, or the nearest place that keeps both margins; the near one counts when it can't.
qreal within(qreal start, qreal length, qreal canvasLength)
{
    return std::max(kMargin, std::min(start, canvasLength - kMargin - length));
}

QRectF placed(QSizeF size, const QRectF& selection, QSizeF canvas)
{
    const QPointF corner = selection.center() - QPointF(size.width() / 2, size.height() / 2);
    return {QPointF(within(corner.x(), size.width(), canvas.width()),
                    within(corner.y(), size.height(), canvas.height())),
            size};
}

} // namespace

Hud::Hud()
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { clear(); });
}

void Hud::show(const QString& text, Stay stay, std::chrono::milliseconds time)
{
    m_timer.stop();
    if (stay == Stay::timed)
        m_timer.start(time);
    setText(text);
}

void Hud::clear()
{
    m_timer.stop();
    setText(std::nullopt);
}

std::optional<std::chrono::milliseconds> Hud::stays() const
{
    return m_timer.isActive() ? std::optional(m_timer.intervalAsDuration()) : std::nullopt;
}

void Hud::setText(std::optional<QString> text)
{
    if (std::exchange(m_text, std::move(text)) != m_text && onChange)
        onChange();
}

QRectF Hud::rect(const QString& text, const QRectF& selection, QSizeF canvas)
{
    return placed(pill(text).size(), selection, canvas);
}

void Hud::paint(QPainter& painter, const QString& text, const QRectF& selection, QSizeF canvas)
{
    const Pill message = pill(text);
    message.paint(painter, placed(message.size(), selection, canvas).topLeft());
}

} // namespace brindlecam
