#include "desktop/TrayHost.h"

#include "desktop/support/Desktop.h"
#include "desktop/support/Patience.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QVariantMap>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

const auto kConnection = QStringLiteral("tray host");
const auto kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto kMenu = QStringLiteral("com.canonical.dbusmenu");

// (ia{sv}av): number, properties, and the entries below, each in a variant.
MenuEntry readEntry(const QDBusArgument& argument)
{
    MenuEntry entry;
    QVariantMap properties;
    argument.beginStructure();
    argument >> entry.id >> properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant below;
        argument >> below;
        entry.entries.push_back(readEntry(below.variant().value<QDBusArgument>()));
    }
    argument.endArray();
    argument.endStructure();
    entry.title = properties.value(QStringLiteral("label")).toString();
    entry.separator = properties.value(QStringLiteral("type")) == QStringLiteral("separator");
    entry.enabled = properties.value(QStringLiteral("enabled"), true).toBool();
    return entry;
}

} // namespace

TrayHost::TrayHost(const Desktop& desktop)
    : m_bus(QDBusConnection::connectToBus(
          desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")), kConnection))
{
    if (!m_bus.isConnected() ||
        !m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                              QDBusConnection::ExportAllContents) ||
        !m_bus.registerService(kWatcher))
        qFatal("the bus takes no tray host");
}

TrayHost::~TrayHost()
{
    m_bus.unregisterService(kWatcher);
    QDBusConnection::disconnectFromBus(kConnection);
}

bool TrayHost::itemComes() const
{
    return waitUntil([this] { return m_items.size() == 1; });
}

void TrayHost::RegisterStatusNotifierItem(const QString& service)
{
    // A path stands for whoever sends it.
    m_items.append(service.startsWith(QLatin1Char('/')) ? message().service() : service);
    Q_EMIT StatusNotifierItemRegistered(m_items.back());
}

void TrayHost::RegisterStatusNotifierHost(const QString&) {}

QVariant TrayHost::itemProperty(const QString& item, const QString& name) const
{
    auto call = QDBusMessage::createMethodCall(item, QStringLiteral("/StatusNotifierItem"),
                                               QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call << QStringLiteral("org.kde.StatusNotifierItem") << name;
    const QDBusMessage reply = m_bus.call(call);
    const QVariantList values = reply.arguments();
    return reply.type() == QDBusMessage::ReplyMessage && !values.isEmpty()
               ? values.front().value<QDBusVariant>().variant()
               : QVariant();
}

QString TrayHost::menuPath(const QString& item) const
{
    return itemProperty(item, QStringLiteral("Menu")).value<QDBusObjectPath>().path();
}

MenuEntry TrayHost::menu(const QString& item) const
{
    auto call =
        QDBusMessage::createMethodCall(item, menuPath(item), kMenu, QStringLiteral("GetLayout"));
    call << 0 << -1 << QStringList();
    const QVariantList values = m_bus.call(call).arguments();
    return values.size() == 2 ? readEntry(values.at(1).value<QDBusArgument>()) : MenuEntry();
}

void TrayHost::follow(const QString& item)
{
    if (!m_bus.connect(item, menuPath(item), kMenu, QStringLiteral("ItemsPropertiesUpdated"), this,
                       SLOT(menuChanged(QDBusMessage))))
        qFatal("the bus tells nothing of a menu");
}

// a(ia{sv}): numbers of entries, each with what it has now.
void TrayHost::menuChanged(const QDBusMessage& message)
{
    const auto changes = message.arguments().constFirst().value<QDBusArgument>();
    changes.beginArray();
    while (!changes.atEnd()) {
        int id = 0;
        QVariantMap properties;
        changes.beginStructure();
        changes >> id >> properties;
        changes.endStructure();
        if (properties.contains(QStringLiteral("label")))
            m_newTitles << properties.value(QStringLiteral("label")).toString();
    }
    changes.endArray();
}

bool TrayHost::choose(const QString& item, const QStringList& titles)
{
    MenuEntry entry = menu(item);
    for (const QString& title : titles) {
        const auto found = std::ranges::find(entry.entries, title, &MenuEntry::title);
        if (found == entry.entries.end())
            return false;
        entry = MenuEntry(*found);
    }
    auto call =
        QDBusMessage::createMethodCall(item, menuPath(item), kMenu, QStringLiteral("Event"));
    call << entry.id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(0)) << 0U;
    m_bus.call(call);
    return true;
}

} // namespace brindlecam::desktop
