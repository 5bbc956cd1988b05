#include "desktop/support/AccessRegistry.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QMutexLocker>

namespace brindlecam::desktop {

/// (ss): who wants to be told, and of what.
struct AccessWish {
    QString who;
    QString event;
};

QDBusArgument& operator<<(QDBusArgument& argument, const AccessWish& wish)
{
    argument.beginStructure();
    argument << wish.who << wish.event;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, AccessWish& wish)
{
    argument.beginStructure();
    argument >> wish.who >> wish.event;
    argument.endStructure();
    return argument;
}

namespace {

const auto kBus = QStringLiteral("org.a11y.Bus");
const auto kName = QStringLiteral("org.a11y.atspi.Registry");
const auto kPath = QStringLiteral("/org/a11y/atspi/registry");
const auto kStates = QStringLiteral("Object:StateChanged");

} // namespace

AccessRegistry::AccessRegistry(QString address)
    : m_address(std::move(address))
{
    qDBusRegisterMetaType<AccessWish>();
    qDBusRegisterMetaType<QList<AccessWish>>();
}

void AccessRegistry::serve(QDBusConnection bus)
{
    const bool served =
        bus.registerVirtualObject(QStringLiteral("/org/a11y"), this, QDBusConnection::SubPath) &&
        bus.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                    QStringLiteral("StateChanged"), this, SLOT(noteState(QDBusMessage))) &&
        bus.registerService(kBus) && bus.registerService(kName);
    if (!served)
        qFatal("the bus takes no registry");
}

QStringList AccessRegistry::programs() const
{
    const QMutexLocker lock(&m_mutex);
    return m_programs;
}

QSet<QString> AccessRegistry::shownBy(const QString& program) const
{
    const QMutexLocker lock(&m_mutex);
    return m_shown.value(program);
}

bool AccessRegistry::handleMessage(const QDBusMessage& message, const QDBusConnection& bus)
{
    if (message.member() == QLatin1String("GetAddress"))
        bus.send(message.createReply(m_address));
    else if (message.member() == QLatin1String("Embed"))
        embed(message, bus);
    else if (message.member() == QLatin1String("GetRegisteredEvents"))
        bus.send(message.createReply(wanted(message.service())));
    else {
        if (message.member().startsWith(QLatin1String("NotifyListeners")))
            ++m_detours;
        return false;
    }
    return true;
}

// Qt sends every key on a detour over the bus while anybody wants to be told of anything. Asked
// again, it lets keys go their way, and goes on telling what was wanted once.
void AccessRegistry::embed(const QDBusMessage& message, const QDBusConnection& bus)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_programs.append(message.service());
    }
    QDBusArgument registry;
    registry.beginStructure();
    registry << kName << QDBusObjectPath("/org/a11y/atspi/accessible/root");
    registry.endStructure();
    bus.send(message.createReply(QVariant::fromValue(registry)));
    QDBusMessage changed =
        QDBusMessage::createSignal(kPath, kName, QStringLiteral("EventListenerDeregistered"));
    changed << bus.baseService() << kStates;
    bus.send(changed);
}

QVariant AccessRegistry::wanted(const QString& program) const
{
    QList<AccessWish> wishes;
    if (!programs().contains(program))
        wishes.append({kName, kStates});
    return QVariant::fromValue(wishes);
}

void AccessRegistry::noteState(const QDBusMessage& signal)
{
    const QVariantList arguments = signal.arguments();
    if (arguments.size() < 2 || arguments.front() != QLatin1String("showing"))
        return;
    const QMutexLocker lock(&m_mutex);
    QSet<QString>& shown = m_shown[signal.service()];
    if (arguments.at(1).toInt() != 0)
        shown.insert(signal.path());
    else
        shown.remove(signal.path());
}

} // namespace brindlecam::desktop
