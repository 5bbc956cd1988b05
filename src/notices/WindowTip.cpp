#include "notices/WindowTip.h"

#include "look/FloatingPanel.h"
#include "notices/Activity.h"
#include "platform/Displays.h"
#include "platform/Panels.h"

#include <QHelpEvent>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kBelowPointer = 22; // its picture hangs down from its place
constexpr qreal kAbovePointer = 8;
constexpr qreal kMargin = 4; // from the edges of the screen and from docks

/// Whether the user turns to something else by it, or the window is no longer where it was.
bool endsTips(QEvent::Type type)
{
    switch (type) {
    case QEvent::Leave:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ContextMenu:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
        return true;
    default:
        return false;
    }
}

} // namespace

WindowTip::WindowTip(const Ports& ports, const Activity& activity, std::chrono::milliseconds stay)
    : m_ports(ports)
    , m_activity(activity)
{
    m_end.setSingleShot(true);
    m_end.setInterval(stay);
    m_end.callOnTimeout([this] { dismiss(); });
}

WindowTip::~WindowTip() = default;

void WindowTip::serve(QWidget& window, OnDesktop onDesktop, const QRect& spared)
{
    m_served[&window] = {std::move(onDesktop), spared};
    connect(&window, &QObject::destroyed, this, [this, gone = &window] { m_served.erase(gone); });
    window.installEventFilter(this);
    for (QWidget* part : window.findChildren<QWidget*>())
        part->installEventFilter(this);
}

bool WindowTip::eventFilter(QObject* watched, QEvent* event)
{
    if (endsTips(event->type()))
        dismiss();
    if (event->type() != QEvent::ToolTip)
        return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    const auto served = widget ? m_served.find(widget->window()) : m_served.end();
    if (served == m_served.end() || widget->toolTip().isEmpty())
        return false;
    const QPoint place = static_cast<QHelpEvent*>(event)->pos();
    if (!m_panel && !m_activity.capture)
        present(widget->toolTip(), served->second.onDesktop(widget->mapTo(widget->window(), place)),
                served->second.spared);
    return true; // or QWidget would open Qt's window
}

void WindowTip::present(const QString& text, QPoint pointer, const QRect& spared)
{
    const auto screen = screenAt(m_ports.displays, pointer);
    if (!screen)
        return;
    const Pill pill = Pill::toolTip(text);
    const auto native = placeBeside(spared, pill.size(), pointer, *screen);
    if (!native)
        return;
    m_panel = std::make_unique<FloatingPanel>(m_ports.panels, m_ports.compositing, PanelRole::toast,
                                              FloatingContent::of(pill));
    m_panel->showAt(*native, screen->scale);
    m_end.start();
}

bool WindowTip::dismiss()
{
    const bool wasShown = m_panel != nullptr;
    m_end.stop();
    m_panel.reset();
    return wasShown;
}

QRect WindowTip::place(QSizeF tip, QPoint pointer, const ScreenInfo& screen)
{
    const auto pixels = [&](qreal points) {
        return static_cast<int>(std::ceil(points * screen.scale));
    };
    const QSize size(pixels(tip.width()), pixels(tip.height()));
    const int margin = pixels(kMargin);
    const QRect free = screen.visibleFrame.adjusted(margin, margin, -margin, -margin);
    const int left = std::min(pointer.x() - size.width() / 2, free.right() + 1 - size.width());
    int top = pointer.y() + pixels(kBelowPointer);
    if (top + size.height() > free.bottom() + 1)
        top = pointer.y() - pixels(kAbovePointer) - size.height();
    // Over a dock the pointer may be outside of what is free.
    top = std::min(top, free.bottom() + 1 - size.height());
    return {QPoint(std::max(left, free.left()), std::max(top, free.top())), size};
}

std::optional<QRect> WindowTip::placeBeside(const QRect& spared, QSizeF tip, QPoint pointer,
                                            const ScreenInfo& screen)
{
    QRect native = place(tip, pointer, screen);
    if (!native.intersects(spared))
        return native;
    const int above = pointer.y() - static_cast<int>(std::ceil(kAbovePointer * screen.scale));
    native.moveBottom(above - 1);
    if (native.intersects(spared) || native.top() < screen.visibleFrame.top())
        return std::nullopt;
    return native;
}

} // namespace brindlecam
