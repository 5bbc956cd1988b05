#include "desktop/support/x11/XServer.h"

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
}

} // namespace brindlecam::desktop
