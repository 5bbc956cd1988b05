#include "desktop/support/XServer.h"

#include "desktop/support/Patience.h"

namespace brindlecam::desktop {

XServer::XServer(const XServerOptions& options)
{
    const QString geometry = QStringLiteral("%1x%2x%3")
                                 .arg(options.pixels.width())
                                 .arg(options.pixels.height())
                                 .arg(options.depth);
    // -ac: a program that runs as another user must get in, too; the server has no network socket.
    m_process = std::make_unique<Process>(
        QStringLiteral("Xvfb"),
        QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), geometry, QStringLiteral("-noreset"),
                    QStringLiteral("-ac"), QStringLiteral("-nolisten"), QStringLiteral("tcp")},
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
    for (const Monitor& monitor : monitors) {
        constexpr qreal kMillimetresPerPixel = 25.4 / 96;
        const QRect& pixels = monitor.pixels;
        const QString geometry = QStringLiteral("%1/%2x%3/%4+%5+%6")
                                     .arg(pixels.width())
                                     .arg(qRound(pixels.width() * kMillimetresPerPixel))
                                     .arg(pixels.height())
                                     .arg(qRound(pixels.height() * kMillimetresPerPixel))
                                     .arg(pixels.x())
                                     .arg(pixels.y());
        // The first one takes the server's only output, so that its automatic monitor goes away.
        const QString output =
            m_named.isEmpty() ? QStringLiteral("screen") : QStringLiteral("none");
        xrandr({QStringLiteral("--setmonitor"), monitor.name, geometry, output});
        m_named.append(monitor.name);
    }
}

void XServer::xrandr(const QStringList& arguments) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("xrandr"),
                  QStringList{QStringLiteral("--display"), m_display} + arguments);
    if (!process.waitForFinished(kPatience) || process.exitCode() != 0)
        qFatal("xrandr fails: %s", process.readAll().constData());
}

} // namespace brindlecam::desktop
