#include "desktop/support/AccessBus.h"

#include <QDBusConnectionInterface>

namespace brindlecam::desktop {

AccessBus::AccessBus(const QString& address)
    : m_connection(QDBusConnection::connectToBus(address, QStringLiteral("access ") + address))
    , m_registry(address)
{
    m_registry.serve(m_connection); // makes children in this thread
    m_registry.moveToThread(&m_thread);
    m_thread.start();
}

AccessBus::~AccessBus()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
    m_thread.quit();
    m_thread.wait();
}

QString AccessBus::nameOf(qint64 pid) const
{
    const QStringList programs = m_registry.programs();
    for (const QString& program : programs) {
        // Fails for those that have gone.
        const QDBusReply<uint> owner = m_connection.interface()->servicePid(program);
        if (owner.isValid() && owner.value() == pid)
            return program;
    }
    return {};
}

} // namespace brindlecam::desktop
