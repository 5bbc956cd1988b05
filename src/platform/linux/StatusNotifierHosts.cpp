#include "platform/linux/StatusNotifierHosts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace brindlecam {

namespace {

const auto kWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto kWatcherPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

StatusNotifierHosts::StatusNotifierHosts()
{
    if (!QDBusConnection::sessionBus().isConnected())
        return;
    auto bus = QDBusConnection::sessionBus();
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(
        &m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { watcherChanged(owner); });
    m_watcher.addWatchedService(kWatcherService);
    // From any sender: with the name of a service QDBusConnection (6.4 and 6.11) looks its owner up
    // and waits for the answer.
    for (const auto& signal : {QStringLiteral("StatusNotifierHostRegistered"),
                               QStringLiteral("StatusNotifierHostUnregistered")})
        bus.connect(QString(), kWatcherPath, kWatcherService, signal, this, SLOT(ask()));
    ask();
}

void StatusNotifierHosts::whenChanged(QObject* context, std::function<void()> changed)
{
    m_listeners.add(context, std::move(changed));
}

void StatusNotifierHosts::ask()
{
    auto call = QDBusMessage::createMethodCall(kWatcherService, kWatcherPath,
                                               QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call << kWatcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* const answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        answer->deleteLater();
        setAvailable(reply.isValid() && reply.value().variant().toBool());
    });
}

void StatusNotifierHosts::watcherChanged(const QString& newOwner)
{
    // Items registered with the old watcher are lost, even when a new one is there already.
    setAvailable(false);
    if (!newOwner.isEmpty())
        ask();
}

void StatusNotifierHosts::setAvailable(bool available)
{
    if (std::exchange(m_available, available) != available)
        m_listeners.tell();
}

} // namespace brindlecam
