#include "platform/linux/x11/X11Panels.h"

#include "platform/linux/x11/X11.h"

#include <algorithm>
#include <utility>

namespace brindlecam {

X11Panels::X11Panels(std::shared_ptr<X11Events> events, Grabber& grabber)
    : m_events(std::move(events))
    , m_grabber(grabber)
{
}

X11Panels::~X11Panels() = default;

PanelWindow* X11Panels::windowOf(const QWidget& widget) const
{
    const auto found = m_windows.find(&widget);
    return found == m_windows.end() ? nullptr : found->second.get();
}

void X11Panels::assume(QWidget& widget, PanelRole role)
{
    m_windows.insert_or_assign(&widget, std::make_unique<PanelWindow>(widget, role, m_events));
    QObject::connect(&widget, &QObject::destroyed, &m_context,
                     [this](const QObject* gone) { forget(gone); });
    if (role == PanelRole::pin)
        watchFullScreen();
}

void X11Panels::forget(const QObject* gone)
{
    m_windows.erase(gone);
    if (std::ranges::none_of(m_windows, [](const auto& entry) { return entry.second->isPin(); }))
        m_fullScreen.reset();
}

void X11Panels::watchFullScreen()
{
    if (!m_fullScreen) {
        m_fullScreen = std::make_unique<FullScreenWatch>(m_events, [this] { watchFullScreen(); });
    }
    bool shownAgain = false;
    for (const auto& [widget, window] : m_windows)
        shownAgain = window->setOverFullScreen(m_fullScreen->covers()) || shownAgain;
    // A dialog that was opened meanwhile, to save a pin, stays above them.
    for (const auto& [widget, window] : m_windows) {
        if (shownAgain)
            window->raiseDialog();
    }
}

void X11Panels::show(QWidget& widget, const QRect& native)
{
    if (PanelWindow* window = windowOf(widget))
        window->show(native);
    else
        widget.show();
}

void X11Panels::place(QWidget& widget, const QRect& native)
{
    if (PanelWindow* window = windowOf(widget))
        window->moveTo(native);
}

QRect X11Panels::nativeRect(const QWidget& widget) const
{
    const PanelWindow* window = windowOf(widget);
    return window ? window->nativeRect() : QRect();
}

void X11Panels::setShape(QWidget& widget, const QRegion& pixels)
{
    if (PanelWindow* window = windowOf(widget))
        window->setShape(pixels);
}

void X11Panels::focus(QWidget& widget)
{
    if (PanelWindow* window = windowOf(widget))
        window->focus();
    else
        widget.activateWindow();
}

bool X11Panels::translucent() const
{
    return x11::hasCompositor();
}

QImage X11Panels::backdrop(const QRect& native)
{
    const Result<QImage> image = m_grabber.grabRegion(native);
    return image ? image.value() : QImage();
}

void X11Panels::setOpacity(QWidget& widget, double opacity)
{
    widget.setWindowOpacity(opacity);
}

} // namespace brindlecam
