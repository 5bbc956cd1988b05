#include "desktop/support/BusDaemon.h"

namespace brindlecam::desktop {

namespace {

/// Whatever a session's bus allows, without its folders of services.
constexpr auto kWithoutServices = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

BusDaemon::BusDaemon(Services services, const QProcessEnvironment& environment)
{
    QString configuration = QStringLiteral("--session");
    if (services == Services::none) {
        if (!m_configuration.open() || m_configuration.write(kWithoutServices) < 0 ||
            !m_configuration.flush())
            qFatal("no configuration for a message bus");
        configuration = QStringLiteral("--config-file=") + m_configuration.fileName();
    }
    m_process = std::make_unique<Process>(
        QStringLiteral("dbus-daemon"),
        QStringList{configuration, QStringLiteral("--nofork"), QStringLiteral("--print-address=1")},
        environment);
    m_address = QString::fromLatin1(m_process->awaitLine("unix:"));
    if (m_address.isEmpty())
        qFatal("no message bus: %s", m_process->log().constData());
}

} // namespace brindlecam::desktop
