#include "platform/x11/windows/X11Panels.h"

#include "platform/FirstFrame.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/PanelWindows.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QMenu>
#include <QStyleHints>

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindlecam {

X11Panels::X11Panels(std::shared_ptr<PanelWindows> windows, std::shared_ptr<ServerPixels> pixels)
    : m_windows(std::move(windows))
    , m_pixels(std::move(pixels))
{
}

X11Panels::~X11Panels() = default;

void X11Panels::assume(QWidget& widget, PanelRole role, const QRect& native)
{
    m_windows->add(widget, role, native);
}

void X11Panels::show(QWidget& widget, const QRect& native)
{
    PanelWindow* window = m_windows->of(widget);
    if (!window) {
        widget.show();
        return;
    }
    if (window->isOverlay())
        m_windows->letPressesThrough(); // a new session: every press is its own
    window->show(native);
    m_windows->keepPressesAway();
}

void X11Panels::showAtOnce(QWidget& widget, const QRect& native, const FirstFrame& frame,
                           std::function<void()> mayPaint)
{
    PanelWindow* window = m_windows->of(widget);
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

// Qt keeps a hidden window's buffer as large as the window was.
void X11Panels::putAway(QWidget& widget)
{
    widget.hide();
    if (QBackingStore* store = widget.backingStore())
        store->resize(QSize(1, 1));
}

void X11Panels::place(QWidget& widget, const QRect& native)
{
    if (PanelWindow* window = m_windows->of(widget))
        window->moveTo(native);
}

// By the pixel: a widget's own mask counts in points.
void X11Panels::cut(QWidget& widget, const QRegion& pixels)
{
    const PanelWindow* window = m_windows->of(widget);
    if (!window)
        return;
    x11::setShape(window->id(), pixels);
    xcb_flush(x11::connection());
}

void X11Panels::focus(QWidget& widget)
{
    if (PanelWindow* window = m_windows->of(widget))
        window->focus();
    else
        widget.activateWindow();
}

void X11Panels::swallowDoubleClick()
{
    const std::chrono::milliseconds interval(
        QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const auto since = m_windows->events()->sinceClick();
    if (since && *since < interval)
        m_windows->swallowPresses(interval - *since, interval);
}

// Qt's own menus are windows that the window manager has no part in, which is what they should be.
void X11Panels::popUp(QWidget& over, QPoint place, std::vector<MenuEntry> entries)
{
    const auto open = over.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
    if (std::ranges::any_of(open, &QMenu::isVisible))
        return;
    auto* menu = new QMenu(&over);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (MenuEntry& entry : entries)
        menu->addAction(entry.title, &over, std::move(entry.run));
    menu->popup(over.mapToGlobal(place));
}

bool X11Panels::fade(QWidget& widget, double strength)
{
    widget.setWindowOpacity(strength);
    return true;
}

} // namespace brindlecam
