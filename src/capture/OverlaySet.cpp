#include "capture/OverlaySet.h"

#include "canvas/CanvasView.h"
#include "platform/Grabber.h"
#include "platform/Panels.h"

#include <algorithm>

namespace brindlecam {

OverlaySet::OverlaySet(Panels& panels, Prefs& prefs, TextRecognizer& recognizer)
    : m_panels(panels)
    , m_prefs(prefs)
    , m_recognizer(recognizer)
{
}

OverlaySet::~OverlaySet() = default;

OverlayWindow& OverlaySet::windowFor(const ScreenInfo& screen)
{
    const auto found = std::ranges::find_if(
        m_windows, [&](const auto& window) { return window->coveredScreen().sameDisplay(screen); });
    if (found != m_windows.end())
        return **found;
    return *m_windows.emplace_back(
        std::make_unique<OverlayWindow>(m_panels, m_prefs, m_recognizer, screen));
}

void OverlaySet::prepare(const std::vector<ScreenInfo>& screens)
{
    std::erase_if(m_windows, [&](const auto& window) {
        return std::ranges::find(m_session, window.get()) == m_session.end() &&
               std::ranges::none_of(screens, [&](const ScreenInfo& screen) {
                   return screen.sameDisplay(window->coveredScreen());
               });
    });
    for (const ScreenInfo& screen : screens)
        windowFor(screen);
}

OverlayWindow& OverlaySet::fill(const GrabbedScreen& shot)
{
    OverlayWindow& window = windowFor(shot.screen);
    window.makeContent(shot);
    m_session.push_back(&window);
    return window;
}

CanvasView* OverlaySet::canvasInUse() const
{
    for (OverlayWindow* window : m_session) {
        if (window->canvas()->isInUse())
            return window->canvas();
    }
    return nullptr;
}

bool OverlaySet::mayBeginSelectionOn(const CanvasView* canvas) const
{
    return std::ranges::none_of(m_session, [canvas](OverlayWindow* window) {
        CanvasView* other = window->canvas();
        if (other == canvas)
            return false;
        other->commitText(); // as every press does
        return !other->editor().annotations().empty();
    });
}

std::optional<ScreenInfo> OverlaySet::screenInUse() const
{
    if (m_session.empty())
        return std::nullopt;
    auto found = std::ranges::find_if(
        m_session, [](const OverlayWindow* window) { return window->canvas()->isInUse(); });
    if (found == m_session.end())
        found = std::ranges::find_if(m_session, &OverlayWindow::isActiveWindow);
    return (found == m_session.end() ? m_session.front() : *found)->coveredScreen();
}

void OverlaySet::focus(std::optional<QPoint> pointer)
{
    if (m_session.empty())
        return;
    const auto found = std::ranges::find_if(m_session, [&](const OverlayWindow* window) {
        return pointer && window->coveredScreen().native.contains(*pointer);
    });
    OverlayWindow& chosen = found == m_session.end() ? *m_session.front() : **found;
    m_panels.focus(chosen);
    chosen.canvas()->setFocus();
}

void OverlaySet::remove(OverlayWindow& window)
{
    std::erase(m_session, &window);
    window.uncover();
}

void OverlaySet::removeAll()
{
    for (OverlayWindow* window : std::exchange(m_session, {}))
        window->uncover();
}

} // namespace brindlecam
