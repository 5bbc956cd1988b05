#include "desktop/support/x11/X11Hardware.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/Connection.h"

#include <QProcess>

#include <xcb/randr.h>

#include <utility>

namespace brindlecam::desktop {

X11Hardware::X11Hardware(QString display)
    : m_display(std::move(display))
{
}

void X11Hardware::setMonitors(const std::vector<Monitor>& monitors)
{
    for (const QString& name : std::as_const(m_named))
        xrandr({QStringLiteral("--delmonitor"), name});
    m_named.clear();
    for (const Monitor& monitor : monitors)
        setMonitor(monitor);
}

void X11Hardware::setMonitor(const Monitor& monitor)
{
    // The first one takes the server's only output, so that its automatic monitor goes away.
    const bool first = m_named.isEmpty() || m_named.first() == monitor.name;
    setMonitor(monitor, first ? QStringLiteral("screen") : QStringLiteral("none"));
    if (!m_named.contains(monitor.name))
        m_named.append(monitor.name);
}

void X11Hardware::removeMonitor(const QString& name)
{
    xrandr({QStringLiteral("--delmonitor"), name});
    m_named.removeAll(name);
}

void X11Hardware::setMode(QSize pixels) const
{
    const QString mode = QStringLiteral("%1x%2").arg(pixels.width()).arg(pixels.height());
    // Without hardware any timing does.
    QStringList timing{QStringLiteral("--newmode"), mode, QStringLiteral("30")};
    for (const int length : {pixels.width(), pixels.height()}) {
        for (const int more : {0, 8, 16, 24})
            timing << QString::number(length + more);
    }
    const QString output = QStringLiteral("screen");
    xrandr(timing);
    xrandr({QStringLiteral("--addmode"), output, mode});
    xrandr({QStringLiteral("--output"), output, QStringLiteral("--mode"), mode});
}

void X11Hardware::setKeyboard(const QString& layout, const QString& option) const
{
    const QString add = QStringLiteral("-option"); // without a name it takes all away
    run(QStringLiteral("setxkbmap"),
        {QStringLiteral("-display"), m_display, layout, add, QString(), add, option});
}

void X11Hardware::setMonitor(const Monitor& monitor, const QString& output)
{
    const QRect& pixels = monitor.pixels;
    const auto millimetres = [](int length) {
        constexpr qreal kMillimetresPerPixel = 25.4 / 96;
        return qRound(length * kMillimetresPerPixel);
    };
    if (m_named.contains(monitor.name)) {
        replaceMonitor(monitor, {millimetres(pixels.width()), millimetres(pixels.height())});
        return;
    }
    const QString geometry = QStringLiteral("%1/%2x%3/%4+%5+%6")
                                 .arg(pixels.width())
                                 .arg(millimetres(pixels.width()))
                                 .arg(pixels.height())
                                 .arg(millimetres(pixels.height()))
                                 .arg(pixels.x())
                                 .arg(pixels.y());
    xrandr({QStringLiteral("--setmonitor"), monitor.name, geometry, output});
}

void X11Hardware::replaceMonitor(const Monitor& monitor, QSize millimetres) const
{
    // The old one must go first. Holding the server, nobody sees the moment between.
    const Connection connection(m_display);
    const xcb_atom_t name = connection.atom(monitor.name.toLatin1());
    xcb_grab_server(connection.raw());
    xcb_randr_delete_monitor(connection.raw(), connection.root(), name);
    xcb_randr_monitor_info_t info{};
    info.name = name;
    info.x = static_cast<std::int16_t>(monitor.pixels.x());
    info.y = static_cast<std::int16_t>(monitor.pixels.y());
    info.width = static_cast<std::uint16_t>(monitor.pixels.width());
    info.height = static_cast<std::uint16_t>(monitor.pixels.height());
    info.width_in_millimeters = static_cast<std::uint32_t>(millimetres.width());
    info.height_in_millimeters = static_cast<std::uint32_t>(millimetres.height());
    const auto cookie = xcb_randr_set_monitor_checked(connection.raw(), connection.root(), &info);
    const Owned<xcb_generic_error_t> error(xcb_request_check(connection.raw(), cookie));
    if (error)
        qFatal("the monitor %s cannot be changed", qPrintable(monitor.name));
    xcb_ungrab_server(connection.raw());
    connection.sync();
}

void X11Hardware::xrandr(const QStringList& arguments) const
{
    run(QStringLiteral("xrandr"), QStringList{QStringLiteral("--display"), m_display} + arguments);
}

void X11Hardware::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kPatience) || process.exitCode() != 0)
        qFatal("%s fails: %s", qPrintable(program), process.readAll().constData());
}

} // namespace brindlecam::desktop
