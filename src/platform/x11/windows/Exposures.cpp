#include "platform/x11/windows/Exposures.h"

#include "base/RepaintArea.h"
#include "platform/x11/windows/QtOnX11.h"

#include <utility>

namespace brindlecam {

Exposures::Exposures(QWidget& widget)
    : m_widget(widget)
{
}

xcb_window_t Exposures::id() const
{
    return x11::idOf(m_widget);
}

void Exposures::holdPainting(std::function<void()> mayPaint)
{
    m_widget.winId();
    m_hold.reset(); // first, or it lifts what the new one lays down
    m_hold = std::make_unique<PaintHold>(m_widget, std::move(mayPaint));
}

void Exposures::paintAll()
{
    if (m_hold)
        m_hold->paintAll();
}

// Qt paints a window at its MapNotify, or its first frame is put there. The exposure that comes
// from the same request would only send the whole of it to the server once more.
bool Exposures::cameWithTheMap(const xcb_expose_event_t& event)
{
    if (m_mappedBy != event.sequence)
        return false;
    if (event.count == 0)
        m_mappedBy.reset();
    return true;
}

// What Qt would send may never have been painted.
X11Events::Verdict Exposures::expose(const xcb_expose_event_t& event)
{
    if (event.window != id())
        return X11Events::Verdict::pass;
    if (cameWithTheMap(event))
        return X11Events::Verdict::swallow;
    if (!m_hold)
        return X11Events::Verdict::pass;
    const qreal scale = m_widget.devicePixelRatioF();
    m_hold->repaint(repaintArea(
        {event.x / scale, event.y / scale, event.width / scale, event.height / scale}, scale));
    return X11Events::Verdict::swallow;
}

X11Events::Verdict Exposures::handle(const xcb_generic_event_t& event)
{
    if (kindOf(event) == XCB_MAP_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (notify.window == id())
            m_mappedBy = notify.sequence;
    } else if (kindOf(event) == XCB_EXPOSE) {
        return expose(reinterpret_cast<const xcb_expose_event_t&>(event));
    }
    return X11Events::Verdict::pass;
}

} // namespace brindlecam
