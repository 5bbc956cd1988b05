#include "long/SessionPanel.h"

#include "base/Text.h"
#include "long/ChromePlacement.h"
#include "long/SessionPanelAccess.h"
#include "long/StatusLine.h"
#include "look/DevicePixels.h"
#include "look/PanelButton.h"
#include "platform/Compositing.h"
#include "platform/Panels.h"
#include "preferences/Config.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace brindlecam {

namespace {

// Points.
constexpr int kLeft = 14;
constexpr int kRight = 10;
constexpr int kAboveAndBelow = 8;
constexpr int kSpacing = 10;
constexpr int kStatusWidth = 430;
/// Both buttons share what the status leaves of a panel that has its whole width.
constexpr int kButtonWidth =
    (static_cast<int>(ChromePlacement::kPanel.width()) - kLeft - kStatusWidth - kRight) / 2 -
    kSpacing;
constexpr qreal kRadius = 10;
constexpr double kAlpha = 0.94;
/// So that it ends somewhere over a dark window, too.
constexpr qreal kEdge = 1;
const QColor kEdgeColor = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.12F);

PanelButton* makeButton(const QString& title, const QString& toolTip, QWidget* parent)
{
    auto* const button = new PanelButton(title, PanelButton::Size::regular, parent);
    button->setToolTip(toolTip);
    button->setAccessibleDescription(toolTip);
    return button;
}

QRegion rounded(QSize pixels, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(QRectF(QPointF(), pixels), radius, radius);
    return QRegion(path.toFillPolygon().toPolygon());
}

} // namespace

SessionPanel::SessionPanel(Panels& panels, Compositing& compositing, const QRect& native,
                           qreal scale, const Words& words)
    : m_panels(panels)
    , m_compositing(compositing)
    , m_native(native)
    , m_scale(scale)
    , m_status(new StatusLine(this))
    , m_done(makeButton(words.doneTitle, text("Terminar y conservar lo capturado"), this))
    , m_cancel(makeButton(text("Cancelar"), text("Terminar y descartar lo capturado"), this))
{
    SessionPanelAccess::install();
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(text("Captura en curso"));
    setAccessibleName(windowTitle());
    m_status->setStatus(words.status);
    connect(m_done, &QAbstractButton::clicked, this, [this] {
        if (const auto done = onDone) // it may drop this one
            done();
    });
    connect(m_cancel, &QAbstractButton::clicked, this, [this] {
        if (const auto cancel = onCancel)
            cancel();
    });
    m_panels.assume(*this, PanelRole::sessionPanel, m_native);
    m_compositing.whenChanged(this, [this] {
        cut();
        update();
    });
}

void SessionPanel::appear()
{
    cut();
    m_panels.show(*this, m_native);
}

void SessionPanel::setStatus(const QString& status)
{
    m_status->setStatus(status);
}

QString SessionPanel::status() const
{
    return m_status->text();
}

void SessionPanel::cut()
{
    m_panels.cut(*this,
                 m_compositing.blends() ? QRegion() : rounded(m_native.size(), kRadius * m_scale));
}

// From the right: the status has what is left.
void SessionPanel::resizeEvent(QResizeEvent*)
{
    int right = width() - kRight;
    for (PanelButton* const button : {m_cancel, m_done}) {
        const int wide = std::max(kButtonWidth, button->sizeHint().width());
        button->setGeometry(right - wide, kAboveAndBelow, wide, height() - 2 * kAboveAndBelow);
        right -= wide + kSpacing;
    }
    const int room = std::max(0, right - kLeft);
    m_status->setGeometry(kLeft, kAboveAndBelow, std::min(kStatusWidth, room),
                          height() - 2 * kAboveAndBelow);
}

void SessionPanel::paintEvent(QPaintEvent*)
{
    const bool blends = m_compositing.blends();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!blends)
        painter.fillRect(rect(), Config::panelColor(1));
    const DevicePixels pixels(painter);
    const QRectF ground = pixels.nearest(rect());
    const qreal radius = pixels.length(kRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Config::panelColor(blends ? kAlpha : 1));
    painter.drawRoundedRect(ground, radius, radius);

    const int edge = pixels.lineWidth(kEdge);
    const qreal inset = edge / 2.0;
    painter.setPen(QPen(kEdgeColor, edge));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(ground.adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
}

} // namespace brindlecam
