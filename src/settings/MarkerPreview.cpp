#include "settings/MarkerPreview.h"

#include "base/Text.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "preferences/Config.h"
#include "settings/SettingsLook.h"

#include <QPainter>

namespace brindlecam {

namespace {

// Points.
constexpr int kPreviewHeight = 40;
constexpr qreal kPreviewInset = 0.5;
constexpr qreal kPreviewRadius = 6;
constexpr int kSampleSize = 14;
constexpr qreal kSampleX = 14;
constexpr qreal kStrokeLeft = 60;
constexpr qreal kStrokeRightGap = 110;
constexpr qreal kStrokeWidth = 16;

} // namespace

MarkerPreview::MarkerPreview(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(text("Así se verá el texto debajo del marcador"));
    setToolTip(text("Así cubre el marcador con esta opacidad"));
}

void MarkerPreview::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

QSize MarkerPreview::sizeHint() const
{
    return {SettingsLook::kColumnWidth, kPreviewHeight};
}

void MarkerPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds(rect());
    painter.setPen(SettingsLook::separatorColor(palette()));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(
        bounds.adjusted(kPreviewInset, kPreviewInset, -kPreviewInset, -kPreviewInset),
        kPreviewRadius, kPreviewRadius);

    const TextLine sample{accessibleName(), InterfaceFont::regular(kSampleSize)};
    painter.setPen(palette().color(QPalette::WindowText));
    sample.draw(painter, {kSampleX, (bounds.height() - sample.height()) / 2 + sample.ascent()});

    QColor ink = Config::palette.front();
    ink.setAlphaF(static_cast<float>(m_opacity));
    painter.setPen(QPen(ink, kStrokeWidth, Qt::SolidLine, Qt::RoundCap));
    const qreal middle = bounds.center().y();
    painter.drawLine(QPointF(kStrokeLeft, middle),
                     QPointF(bounds.right() - kStrokeRightGap, middle));
}

} // namespace brindlecam
