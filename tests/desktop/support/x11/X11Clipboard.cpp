#include "desktop/support/x11/X11Clipboard.h"

namespace brindlecam::desktop {

X11Clipboard::X11Clipboard(const QString& display)
    : m_display(display)
    , m_reader(display)
{
}

std::optional<QString> X11Clipboard::text()
{
    const auto bytes = read("UTF8_STRING");
    return bytes ? std::optional(QString::fromUtf8(*bytes)) : std::nullopt;
}

void X11Clipboard::askAndLeave(const QByteArray& format)
{
    SelectionReader passing(m_display);
    passing.ask(format);
    passing.connection().sync();
}

void X11Clipboard::cutOwnersConnection()
{
    xcb_kill_client(m_reader.connection().raw(), owner());
    m_reader.connection().sync();
}

} // namespace brindlecam::desktop
