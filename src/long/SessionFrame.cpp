#include "long/SessionFrame.h"

#include "base/Text.h"
#include "long/DashedRing.h"
#include "look/DevicePixels.h"
#include "platform/Panels.h"

#include <QPainter>
#include <QRegion>

namespace brindlecam {

namespace {

QRegion regionOf(const std::vector<QRect>& rects)
{
    QRegion region;
    for (const QRect& rect : rects)
        region += rect;
    return region;
}

} // namespace

SessionFrame::SessionFrame(Panels& panels, const QRect& native, const QRect& captured, qreal scale,
                           const QColor& color)
    : m_panels(panels)
    , m_native(native)
    , m_strokes(DashedRing::strokesAround(captured.translated(-native.topLeft()), scale))
    , m_color(color)
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(text("Área que se captura"));
    setAccessibleName(windowTitle());
    m_panels.assume(*this, PanelRole::frame, m_native);
}

// Also where windows blend: what blends them may end at any time.
void SessionFrame::appear()
{
    m_panels.cut(*this, regionOf(m_strokes));
    m_panels.show(*this, m_native);
}

void SessionFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const DevicePixels pixels(painter);
    for (const QRect& stroke : m_strokes)
        painter.fillRect(stroke, m_color);
}

} // namespace brindlecam
