#include "platform/x11/windows/X11Panels.h"

#include "base/FreedMemory.h"
#include "platform/FirstFrame.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/ServerPixels.h"

#include <QApplication>
#include <QStyleHints>

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindlecam {

X11Panels::X11Panels(std::shared_ptr<X11Events> events, std::shared_ptr<ServerPixels> pixels)
    : m_events(std::move(events))
    , m_pixels(std::move(pixels))
    , m_backdrops(m_pixels)
    , m_compositor("_NET_WM_CM_S0", [this] { m_listeners.tell(); })
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
    x11::PanelTraits traits = x11::PanelTraits::of(role);
    // Without a compositor the server itself composes windows that could blend, at each change: a
    // large pin would take twice as long to resize. Its corners stay cut if one comes later.
    if (role == PanelRole::pin)
        traits.blends = m_compositor.owned();
    m_windows.insert_or_assign(
        &widget, std::make_unique<PanelWindow>(widget, role, traits, m_events, m_clock));
    QObject::connect(&widget, &QObject::destroyed, &m_context,
                     [this](const QObject* gone) { forget(gone); });
    if (role == PanelRole::pin)
        watchFullScreen();
}

void X11Panels::forget(const QObject* gone)
{
    const auto found = m_windows.find(gone);
    if (found == m_windows.end())
        return;
    const auto isPin = [](const auto& entry) { return entry.second->role() == PanelRole::pin; };
    const bool wasPin = isPin(*found);
    m_windows.erase(found);
    if (!wasPin)
        return;
    if (std::ranges::none_of(m_windows, isPin))
        m_fullScreen.reset();
    giveFreedMemoryBack(); // pictures of some hundred kilobytes lay among everything else
}

void X11Panels::watchFullScreen()
{
    if (!m_fullScreen) {
        m_fullScreen = std::make_unique<FullScreenWatch>(
            m_events, FullScreenWatch::Callbacks{.isHeld = [this] { return isInUse(); },
                                                 .looked = [this] { watchFullScreen(); }});
    }
    bool shownAgain = false;
    for (const auto& [widget, window] : m_windows)
        shownAgain = window->setOverFullScreen(m_fullScreen->covers()) || shownAgain;
    for (const auto& [widget, window] : m_windows)
        keepAbovePins(*window, shownAgain);
}

/// Whether our own windows must stay as they are: one is being dragged, or has a menu open, or lies
/// beneath the overlays of a session.
bool X11Panels::isInUse() const
{
    return QGuiApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget() ||
           std::ranges::any_of(m_windows, [](const auto& entry) {
               return entry.second->role() == PanelRole::overlay && entry.second->isShown();
           });
}

/// A dialog, to save a pin for one, stays above the pins where no full-screen window covers it.
void X11Panels::keepAbovePins(PanelWindow& dialog, bool pinsWereRaised)
{
    if (dialog.role() != PanelRole::dialog || !dialog.isShown())
        return;
    if (pinsWereRaised)
        dialog.raise();
    const QRect place = dialog.nativeRect();
    if (!m_fullScreen->covers() || m_fullScreen->coversPartOf(place))
        return;
    for (const auto& [widget, window] : m_windows) {
        if (window->role() == PanelRole::pin && window->isShown() &&
            window->nativeRect().intersects(place))
            window->lowerBelow(dialog);
    }
}

void X11Panels::show(QWidget& widget, const QRect& native)
{
    PanelWindow* window = windowOf(widget);
    if (!window) {
        widget.show();
        return;
    }
    if (window->role() == PanelRole::overlay)
        m_clickSink.reset(); // a new session: every press is its own
    window->show(native);
    if (m_clickSink)
        m_clickSink->raise(); // a window manager maps it later, which the sink sees by itself
}

void X11Panels::showAtOnce(QWidget& widget, const QRect& native, const FirstFrame& frame,
                           std::function<void()> mayPaint)
{
    PanelWindow* window = windowOf(widget);
    if (!window) {
        show(widget, native);
        QMetaObject::invokeMethod(&widget, std::move(mayPaint), Qt::QueuedConnection);
        return;
    }
    window->holdPainting(std::move(mayPaint));
    show(widget, native);
    if (frame.size() != native.size() || !m_pixels->write(window->id(), frame))
        window->paintAll();
}

void X11Panels::place(QWidget& widget, const QRect& native)
{
    if (PanelWindow* window = windowOf(widget))
        window->moveTo(native);
}

QRect X11Panels::nativeRect(const QWidget& widget) const
{
    PanelWindow* window = windowOf(widget);
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

void X11Panels::swallowDoubleClick()
{
    const std::chrono::milliseconds interval(
        QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const auto since = m_events->sinceClick();
    if (since && *since < interval) {
        m_clickSink = std::make_unique<ClickSink>(m_events, interval - *since, interval,
                                                  [this] { m_clickSink.reset(); });
    }
}

bool X11Panels::translucent() const
{
    return m_compositor.owned();
}

bool X11Panels::translucent(const QWidget& widget) const
{
    const PanelWindow* window = windowOf(widget);
    return translucent() && window && window->canBlend();
}

void X11Panels::whenBlendingChanges(QObject* context, std::function<void()> changed)
{
    m_listeners.add(context, std::move(changed));
}

QImage X11Panels::backdrop(const QRect& native)
{
    const Result<QImage> image = m_backdrops.read(native);
    return image ? image.value() : QImage();
}

void X11Panels::setOpacity(QWidget& widget, double opacity)
{
    widget.setWindowOpacity(opacity);
}

} // namespace brindlecam
