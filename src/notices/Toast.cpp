#include "notices/Toast.h"

#include "look/FloatingPanel.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "platform/Displays.h"
#include "preferences/Config.h"

#include <QTimer>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kFontSize = 14;
constexpr qreal kPaddingX = 18;
constexpr qreal kPaddingY = 10;
constexpr qreal kAlpha = 0.92;
constexpr qreal kAboveBottom = 80; // from the end of the visible frame

/// Centred on the screen's whole width, above what docks leave free. Native pixels.
QRect placeOn(const ScreenInfo& screen, QSizeF points)
{
    const QSize size(static_cast<int>(std::ceil(points.width() * screen.scale)),
                     static_cast<int>(std::ceil(points.height() * screen.scale)));
    const int bottom = screen.visibleFrame.y() + screen.visibleFrame.height() -
                       qRound(kAboveBottom * screen.scale);
    const int left = screen.native.x() + (screen.native.width() - size.width()) / 2;
    return {QPoint(left, bottom - size.height()), size};
}

/// That screen with the docks of this moment, the primary screen without one.
std::optional<ScreenInfo> asItIsNow(const std::optional<ScreenInfo>& screen,
                                    const Displays& displays)
{
    const std::vector<ScreenInfo> screens = displays.screens();
    if (!screen)
        return screens.empty() ? std::nullopt : std::optional(screens.front());
    const auto found = std::ranges::find_if(
        screens, [&](const ScreenInfo& known) { return known.sameDisplay(*screen); });
    return found == screens.end() ? screen : *found;
}

} // namespace

/// One toast from its appearance to the end of its fade.
class ToastPanel final : public QObject {
public:
    /// `replaced` is still on the screen; null when none is.
    ToastPanel(Panels& panels, Compositing& compositing, const Pill& pill, const ScreenInfo& screen,
               const ToastPanel* replaced, Toast::Stays stays, std::function<void()> done)
        : m_panel(panels, compositing, PanelRole::toast, FloatingContent::of(pill))
        , m_done(std::move(done))
    {
        m_panel.showAt(placeOn(screen, pill.size()), screen.scale,
                       replaced ? &replaced->m_panel : nullptr);
        if (stays == Toast::Stays::aMoment)
            QTimer::singleShot(Config::toastShown, Qt::PreciseTimer, this, [this] { fade(0); });
    }

    void leave() { fade(0); }

private:
    void fade(int step)
    {
        const int steps = m_panel.fadeSteps();
        m_panel.setStrength(1.0 - static_cast<double>(step) / steps);
        if (step == steps) {
            const std::function<void()> done = std::move(m_done); // it ends this object
            done();
            return;
        }
        QTimer::singleShot(Config::toastFade / steps, Qt::PreciseTimer, this,
                           [this, step] { fade(step + 1); });
    }

    FloatingPanel m_panel;
    std::function<void()> m_done;
};

Toast::Toast(Displays& displays, Panels& panels, Compositing& compositing)
    : m_displays(displays)
    , m_panels(panels)
    , m_compositing(compositing)
{
}

Toast::~Toast() = default;

void Toast::show(const QString& text, const std::optional<ScreenInfo>& screen, Stays stays)
{
    const std::optional<ScreenInfo> place = asItIsNow(screen, m_displays);
    if (!place)
        return;
    if (m_suspended) {
        m_held = Held{text, *place, stays};
        return;
    }
    const Pill pill{.text = text,
                    .font = InterfaceFont::medium(kFontSize),
                    .paddingX = kPaddingX,
                    .paddingY = kPaddingY,
                    .alpha = kAlpha};
    m_current = std::make_unique<ToastPanel>(m_panels, m_compositing, pill, *place, m_current.get(),
                                             stays, [this] { m_current.reset(); });
    m_shown = Held{text, *place, stays};
}

bool Toast::lasts(const std::optional<Held>& what)
{
    return what && what->stays == Stays::untilEnded;
}

void Toast::endLasting()
{
    if (lasts(m_held))
        m_held.reset();
    if (m_current && lasts(m_shown)) {
        m_shown.reset();
        m_current->leave();
    }
}

void Toast::suspend()
{
    m_suspended = true;
    if (m_current && lasts(m_shown) && !m_held)
        m_held = std::move(m_shown);
    m_current.reset();
}

void Toast::resume()
{
    m_suspended = false;
    if (const std::optional<Held> held = std::exchange(m_held, std::nullopt))
        show(held->text, held->screen, held->stays);
}

} // namespace brindlecam
