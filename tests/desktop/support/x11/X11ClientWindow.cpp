#include "desktop/support/x11/X11ClientWindow.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/X11Geometry.h"
#include "desktop/support/x11/X11Keys.h"
#include "desktop/support/x11/X11Pictures.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <array>

namespace brindlecam::desktop {

X11ClientWindow::X11ClientWindow(const QString& display, const ClientWindowOptions& options)
    : m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    QImage picture = options.picture;
    if (picture.isNull()) {
        picture = QImage(1, 1, QImage::Format_RGB32);
        picture.fill(options.colour);
    }
    const xcb_pixmap_t background = uploaded(m_connection, picture);
    const std::uint32_t values[] = {background, options.kind == WindowKind::unmanaged ? 1U : 0U,
                                    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE |
                                        XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    const QRect& place = options.pixels;
    xcb_create_window(m_connection.raw(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(),
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      static_cast<std::uint16_t>(place.width()),
                      static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_free_pixmap(m_connection.raw(), background);
    announce(options);
    xcb_map_window(m_connection.raw(), m_window);
    m_connection.sync();
    if (!waitUntil([this] { return isViewable(); }))
        qFatal("the window %s is never shown", qPrintable(options.title));
}

QRect X11ClientWindow::pixels() const
{
    return insideOf(m_connection, m_window);
}

QRect X11ClientWindow::framePixels() const
{
    const auto extents = m_connection.property32(m_window, "_NET_FRAME_EXTENTS");
    if (extents.size() != 4)
        return pixels();
    const auto side = [&](std::size_t index) { return static_cast<int>(extents[index]); };
    return pixels().adjusted(-side(0), -side(2), side(1), side(3));
}

bool X11ClientWindow::hasFocus() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        m_connection.raw(), xcb_get_input_focus(m_connection.raw()), nullptr));
    return reply && reply->focus == m_window;
}

void X11ClientWindow::takeFocus()
{
    xcb_set_input_focus(m_connection.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, m_window,
                        XCB_CURRENT_TIME);
    m_connection.sync();
}

void X11ClientWindow::raise()
{
    restack(XCB_STACK_MODE_ABOVE);
}

void X11ClientWindow::lower()
{
    restack(XCB_STACK_MODE_BELOW);
}

void X11ClientWindow::paint(QColor colour)
{
    QImage picture(1, 1, QImage::Format_RGB32);
    picture.fill(colour);
    paint(picture);
}

void X11ClientWindow::paint(const QImage& picture)
{
    const xcb_pixmap_t background = uploaded(m_connection, picture);
    xcb_change_window_attributes(m_connection.raw(), m_window, XCB_CW_BACK_PIXMAP, &background);
    xcb_clear_area(m_connection.raw(), 0, m_window, 0, 0, 0, 0);
    xcb_free_pixmap(m_connection.raw(), background);
    m_connection.sync();
}

void X11ClientWindow::claimFullScreen(bool fullScreen)
{
    const xcb_atom_t state = m_connection.atom("_NET_WM_STATE_FULLSCREEN");
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, fullScreen ? 1 : 0,
                        &state);
    m_connection.sync();
}

void X11ClientWindow::forget()
{
    collect();
    m_keys.clear();
    m_clicks.clear();
    m_keyEvents = 0;
}

const std::vector<KeyPress>& X11ClientWindow::keys()
{
    collect();
    return m_keys;
}

const std::vector<Click>& X11ClientWindow::clicks()
{
    collect();
    return m_clicks;
}

int X11ClientWindow::keyEvents()
{
    collect();
    return m_keyEvents;
}

int X11ClientWindow::focusGains()
{
    collect();
    return m_focusGains;
}

void X11ClientWindow::restack(std::uint32_t mode)
{
    xcb_configure_window(m_connection.raw(), m_window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    m_connection.sync();
}

void X11ClientWindow::announce(const ClientWindowOptions& options) const
{
    const QByteArray title = options.title.toUtf8();
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_NAME"), m_connection.atom("UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(title.size()), title.constData());
    const auto pid = static_cast<std::uint32_t>(QCoreApplication::applicationPid());
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &pid);
    const QByteArray host = QSysInfo::machineHostName().toLocal8Bit();
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(host.size()), host.constData());
    // WM_NORMAL_HINTS: the user chose place and size, so the window manager keeps them.
    constexpr std::uint32_t kUserPlaceAndSize = 1 | 2;
    const std::array<std::uint32_t, 18> hints{kUserPlaceAndSize};
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(),
                        hints.data());
    switch (options.kind) {
    case WindowKind::normal:
        setAtom("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_NORMAL");
        break;
    case WindowKind::dialog:
        setAtom("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DIALOG");
        break;
    case WindowKind::dock:
        setAtom("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
        break;
    case WindowKind::utility:
        setAtom("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_UTILITY");
        break;
    case WindowKind::unmanaged:
        break;
    }
}

void X11ClientWindow::setAtom(const QByteArray& property, const QByteArray& value) const
{
    const xcb_atom_t atom = m_connection.atom(value);
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom(property), XCB_ATOM_ATOM, 32, 1, &atom);
}

bool X11ClientWindow::isViewable() const
{
    const Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection.raw(), xcb_get_window_attributes(m_connection.raw(), m_window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void X11ClientWindow::collect()
{
    m_connection.sync();
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
        const auto type = event->response_type & 0x7f;
        m_keyEvents += type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE ? 1 : 0;
        m_focusGains += type == XCB_FOCUS_IN ? 1 : 0;
        if (type == XCB_KEY_PRESS) {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
            m_keys.push_back({keyOf(m_connection.keysym(key.detail)), modifiersOf(key.state)});
        } else if (type == XCB_BUTTON_PRESS) {
            const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(*event);
            m_clicks.push_back({QPoint(press.event_x, press.event_y), press.detail});
        }
    }
}

} // namespace brindlecam::desktop
