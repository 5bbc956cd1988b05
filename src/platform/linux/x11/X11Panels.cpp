#include "platform/linux/x11/X11Panels.h"

#include "platform/linux/x11/X11.h"

#include <utility>

namespace brindlecam {

X11Panels::X11Panels(std::shared_ptr<X11Events> events, Grabber& grabber)
    : m_events(std::move(events))
    , m_grabber(grabber)
{
}

X11Panels::~X11Panels() = default;

void X11Panels::assume(QWidget& widget, PanelRole role)
{
    m_windows.insert_or_assign(&widget, std::make_unique<PanelWindow>(widget, role, m_events));
    QObject::connect(&widget, &QObject::destroyed, &m_context,
                     [this](const QObject* gone) { m_windows.erase(gone); });
}

void X11Panels::show(QWidget& widget, const QRect& native)
{
    if (const auto found = m_windows.find(&widget); found != m_windows.end())
        found->second->show(native);
    else
        widget.show();
}

void X11Panels::focus(QWidget& widget)
{
    if (const auto found = m_windows.find(&widget); found != m_windows.end())
        found->second->focus();
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
