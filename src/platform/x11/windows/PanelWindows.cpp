#include "platform/x11/windows/PanelWindows.h"

#include <utility>

namespace brindlecam {

PanelWindows::PanelWindows(std::shared_ptr<X11Events> events)
    : m_events(std::move(events))
{
}

void PanelWindows::add(QWidget& widget, PanelRole role, const QRect& native)
{
    auto window = std::make_unique<PanelWindow>(widget, x11::PanelTraits::of(role), m_events,
                                                m_clock, native);
    m_entries.insert_or_assign(&widget, Entry{role, std::move(window)});
    QObject::connect(&widget, &QObject::destroyed, &m_context,
                     [this](const QObject* gone) { m_entries.erase(gone); });
}

PanelWindow* PanelWindows::of(const QWidget& widget) const
{
    const auto found = m_entries.find(&widget);
    return found == m_entries.end() ? nullptr : found->second.window.get();
}

std::vector<PanelWindow*> PanelWindows::shown(PanelRole role) const
{
    std::vector<PanelWindow*> windows;
    for (const auto& [widget, entry] : m_entries) {
        if (entry.role == role && entry.window->isShown())
            windows.push_back(entry.window.get());
    }
    return windows;
}

void PanelWindows::swallowPresses(std::chrono::milliseconds left,
                                  std::chrono::milliseconds interval)
{
    m_clickSink =
        std::make_unique<ClickSink>(m_events, left, interval, [this] { m_clickSink.reset(); });
}

void PanelWindows::keepPressesAway()
{
    if (m_clickSink)
        m_clickSink->raise();
}

} // namespace brindlecam
