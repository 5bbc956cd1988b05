#include "desktop/support/x11/XServer.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/Connection.h"

#include <xcb/randr.h>

namespace brindlecam::desktop {

XServer::XServer(const ScreenOptions& options)
{
    const QString geometry = QStringLiteral("%1x%2x%3")
                                 .arg(options.pixels.width())
                                 .arg(options.pixels.height())
                                 .arg(options.depth);
    // -ac: a program that runs as another user must get in, too; the server has no network socket.
    QStringList arguments{QStringLiteral("-displayfd"),
                          QStringLiteral("1"),
                          QStringLiteral("-screen"),
                          QStringLiteral("0"),
                          geometry,
                          QStringLiteral("-noreset"),
                          QStringLiteral("-ac"),
                          QStringLiteral("-nolisten"),
                          QStringLiteral("tcp")};
    if (!options.without.isEmpty())
        arguments << QStringLiteral("-extension") << options.without;
    m_process = std::make_unique<Process>(QStringLiteral("Xvfb"), arguments,
                                          QProcessEnvironment::systemEnvironment());
    const QByteArray number = m_process->awaitLine();
    if (number.isEmpty())
        qFatal("Xvfb names no display: %s", m_process->log().constData());
    m_display = QLatin1Char(':') + QString::fromLatin1(number);
    if (!options.monitors.empty())
        setMonitors(options.monitors);
}

void XServer::setMonitors(const std::vector<Monitor>& monitors)
{
    for (const QString& name : std::as_const(m_named))
        xrandr({QStringLiteral("--delmonitor"), name});
    m_named.clear();
    for (const Monitor& monitor : monitors)
        setMonitor(monitor);
}

void XServer::setMonitor(const Monitor& monitor)
{
    // The first one takes the server's only output, so that its automatic monitor goes away.
    const bool first = m_named.isEmpty() || m_named.first() == monitor.name;
    setMonitor(monitor, first ? QStringLiteral("screen") : QStringLiteral("none"));
    if (!m_named.contains(monitor.name))
        m_named.append(monitor.name);
}

void XServer::removeMonitor(const QString& name)
{
    xrandr({QStringLiteral("--delmonitor"), name});
    m_named.removeAll(name);
}

void XServer::setMode(QSize pixels) const
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

void XServer::setKeyboard(const QString& layout, const QString& option) const
{
    QStringList arguments{QStringLiteral("-display"), m_display, layout};
    if (!option.isEmpty())
        arguments << QStringLiteral("-option") << option;
    run(QStringLiteral("setxkbmap"), arguments);
}

void XServer::setMonitor(const Monitor& monitor, const QString& output)
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

void XServer::replaceMonitor(const Monitor& monitor, QSize millimetres) const
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

void XServer::xrandr(const QStringList& arguments) const
{
    run(QStringLiteral("xrandr"), QStringList{QStringLiteral("--display"), m_display} + arguments);
}

void XServer::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kPatience) || process.exitCode() != 0)
        qFatal("%s fails: %s", qPrintable(program), process.readAll().constData());
}

} // namespace brindlecam::desktop
