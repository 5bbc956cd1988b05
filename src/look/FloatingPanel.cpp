#include "look/FloatingPanel.h"

#include "look/Pill.h"
#include "platform/Compositing.h"

#include <QAccessible>
#include <QPainter>
#include <QPainterPath>

#include <utility>

namespace brindlecam {

namespace {

constexpr int kBlendedFadeSteps = 15; // every 20 ms of a 0.3 s fade
constexpr int kPaintedFadeSteps = 6;
/// Native pixels: at a fractional scale Qt's window may be one larger than what was asked for.
constexpr int kSpare = 2;

/// The window's shape in points, one point wider than the content all around so that the softened
/// edge is never cut.
QRegion shapeFor(const FloatingContent& content)
{
    QPainterPath path;
    const QRectF outline = QRectF(QPointF(), content.size).adjusted(-1, -1, 1, 1);
    path.addRoundedRect(outline, content.radius, content.radius);
    return QRegion(path.toFillPolygon().toPolygon());
}

} // namespace

FloatingContent FloatingContent::of(const Pill& pill)
{
    return {.size = pill.size(),
            .radius = pill.cornerRadius(),
            .paint = [pill](QPainter& painter) { pill.paint(painter, {}); },
            .spoken = QString(pill.text).replace(QLatin1Char('\n'), QLatin1Char(' '))};
}

FloatingPanel::FloatingPanel(Panels& panels, Compositing& compositing, PanelRole role,
                             FloatingContent content)
    : m_panels(panels)
    , m_compositing(compositing)
    , m_content(std::move(content))
    , m_blends(compositing.blends())
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(m_blends ? Qt::WA_TranslucentBackground : Qt::WA_OpaquePaintEvent);
    setAccessibleName(m_content.spoken);
    setWindowTitle(m_content.spoken);
    m_panels.assume(*this, role, {});
}

void FloatingPanel::showAt(const QRect& native, qreal scale, const FloatingPanel* replaced)
{
    m_scale = scale;
    if (!m_blends) {
        m_native = native.adjusted(0, 0, kSpare, kSpare);
        m_backdrop = m_compositing.backdrop(m_native);
        if (replaced && !m_backdrop.isNull())
            takeOverBackdrop(*replaced);
        setMask(shapeFor(m_content));
    }
    m_panels.show(*this, native);
    QAccessibleEvent spoken(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

// The windows below have not painted yet what the replaced panel covered.
void FloatingPanel::takeOverBackdrop(const FloatingPanel& replaced)
{
    const QRect shared = m_native.intersected(replaced.m_native);
    if (shared.isEmpty() || replaced.m_backdrop.isNull())
        return;
    QImage source = replaced.m_backdrop;
    source.setDevicePixelRatio(1);
    QPainter painter(&m_backdrop);
    painter.drawImage(shared.topLeft() - m_native.topLeft(), source,
                      shared.translated(-replaced.m_native.topLeft()));
}

void FloatingPanel::setStrength(double strength)
{
    const bool faded = m_blends && m_panels.fade(*this, strength);
    m_strength = faded ? 1 : strength;
    if (!faded)
        update();
}

int FloatingPanel::fadeSteps() const
{
    return m_blends ? kBlendedFadeSteps : kPaintedFadeSteps;
}

void FloatingPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!m_blends)
        paintBackdrop(painter);
    if (m_blends && m_strength == 1)
        m_content.paint(painter);
    else
        paintFaint(painter);
}

void FloatingPanel::paintBackdrop(QPainter& painter)
{
    if (m_backdrop.isNull()) {
        painter.fillRect(rect(), Qt::black);
        return;
    }
    m_backdrop.setDevicePixelRatio(m_scale);
    painter.drawImage(QPointF(), m_backdrop);
}

// As one picture: the text must not shine through its own ground.
void FloatingPanel::paintFaint(QPainter& painter) const
{
    const qreal density = painter.device()->devicePixelRatioF();
    QImage layer((m_content.size * density).toSize() + QSize(1, 1),
                 QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(density);
    layer.fill(Qt::transparent);
    {
        QPainter layerPainter(&layer);
        m_content.paint(layerPainter);
    }
    painter.setOpacity(m_strength);
    painter.drawImage(QPointF(), layer);
}

} // namespace brindlecam
