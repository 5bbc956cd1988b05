#include "capture/Countdown.h"

#include "look/FloatingPanel.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "platform/Displays.h"

#include <QPainter>

#include <optional>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr QSizeF kSize(120, 120);
constexpr qreal kRadius = 28;
constexpr qreal kAlpha = 0.85;
constexpr qreal kDigitSize = 64;
/// The digits hang from the top of this box, 18 points above the lower edge and 22 below the upper.
constexpr QRectF kLabel(0, 22, 120, 80);

/// In the middle of the screen. Native pixels.
QRect placeOn(const ScreenInfo& screen)
{
    const QSize size = (kSize * screen.scale).toSize();
    return {screen.native.topLeft() + QPoint((screen.native.width() - size.width()) / 2,
                                             (screen.native.height() - size.height()) / 2),
            size};
}

void paint(QPainter& painter, int remaining)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Config::panelColor(kAlpha));
    painter.drawRoundedRect(QRectF(QPointF(), kSize), kRadius, kRadius);

    const TextLine digits{.text = QString::number(remaining),
                          .font = InterfaceFont::semibold(kDigitSize),
                          .evenDigits = true};
    painter.setPen(Qt::white);
    digits.draw(painter,
                QPointF(kLabel.center().x() - digits.width() / 2, kLabel.top() + digits.ascent()));
}

} // namespace

Countdown::Countdown(Displays& displays, Panels& panels, Compositing& compositing)
    : Countdown(displays, panels, compositing, Timing())
{
}

Countdown::Countdown(Displays& displays, Panels& panels, Compositing& compositing, Timing timing)
    : m_displays(displays)
    , m_panels(panels)
    , m_compositing(compositing)
    , m_timing(timing)
{
    m_ticks.setTimerType(Qt::PreciseTimer);
    m_ticks.callOnTimeout([this] { tick(); });
    m_handOff.setTimerType(Qt::PreciseTimer);
    m_handOff.setSingleShot(true);
    m_handOff.callOnTimeout([this] { std::exchange(m_action, {})(); });
}

Countdown::~Countdown() = default;

void Countdown::run(int seconds, std::function<void()> action)
{
    cancel();
    const std::optional<ScreenInfo> screen = screenUnderPointer(m_displays);
    if (!screen) {
        action();
        return;
    }
    m_remaining = seconds;
    m_action = std::move(action);
    m_panel = std::make_unique<FloatingPanel>(
        m_panels, m_compositing, PanelRole::countdown,
        FloatingContent{.size = kSize,
                        .radius = kRadius,
                        .paint = [this](QPainter& painter) { paint(painter, m_remaining); },
                        .spoken = QString::number(seconds)});
    m_panel->showAt(placeOn(*screen), screen->scale);
    m_ticks.start(m_timing.tick);
}

bool Countdown::cancel()
{
    const bool counted = m_ticks.isActive() || m_handOff.isActive();
    m_ticks.stop();
    m_handOff.stop();
    m_action = {};
    m_panel.reset();
    return counted;
}

void Countdown::tick()
{
    --m_remaining;
    if (m_remaining >= 1) {
        m_panel->setAccessibleName(QString::number(m_remaining));
        m_panel->update();
        return;
    }
    m_ticks.stop();
    m_panel.reset();
    m_handOff.start(m_timing.handOff);
}

} // namespace brindlecam
