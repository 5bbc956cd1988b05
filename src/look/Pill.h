#pragma once

#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <chrono>

class QPainter;

namespace brindlecam {

/// How long a tool tip stays where nothing ends it: as long as Qt's own.
constexpr std::chrono::seconds kToolTipStay{10};

/// A short white text on a dark rounded panel: the one look of toasts, hints, size labels, tool
/// tips and transient messages. Layout in points; painting only paints what layout found.
struct Pill {
    QString text; ///< line feeds part its lines
    QFont font;
    qreal paddingX = 0;      ///< on each side
    qreal paddingY = 0;      ///< above and below
    qreal alpha = 0.9;       ///< of the dark panel
    qreal radius = -1;       ///< negative: half the height, a capsule
    bool evenDigits = false; ///< digits of one width, so that a counting text does not jump

    /// That of a tool tip, wherever it stands; a long text has several lines. Main thread.
    [[nodiscard]] static Pill toolTip(const QString& text);

    /// Text size in whole points (rounded up) plus padding.
    [[nodiscard]] QSizeF size() const;
    /// The radius of its corners, in points.
    [[nodiscard]] qreal cornerRadius() const;
    /// Paints the pill with its top-left corner here.
    void paint(QPainter& painter, QPointF topLeft) const;
};

} // namespace brindlecam
