#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>

#include <vector>

namespace brindlecam::desktop {

class Desktop;

/// One entry of a menu that the program shows through the bus.
struct MenuEntry {
    int id = 0;
    QString title; ///< empty for a separator
    bool separator = false;
    bool enabled = true;
    std::vector<MenuEntry> entries; ///< of its submenu
};

/// A StatusNotifier watcher with one host, as a desktop's panel is: programs register their status
/// items, the host reads their menus and chooses from them. Needs a running event loop.
class TrayHost final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    /// Takes the watcher's name on the desktop's message bus.
    explicit TrayHost(const Desktop& desktop);
    ~TrayHost() override;

    /// Bus names of the registered items, oldest first.
    [[nodiscard]] QStringList items() const { return m_items; }
    /// Waits until there is one item.
    [[nodiscard]] bool itemComes() const;
    /// A property of an item, as in "Title".
    [[nodiscard]] QVariant itemProperty(const QString& item, const QString& name) const;
    /// The whole menu of an item.
    [[nodiscard]] MenuEntry menu(const QString& item) const;
    /// Hears from now on what changes in the menu of an item, as a host does that keeps it.
    void follow(const QString& item);
    /// New titles that it was told of since, in order.
    [[nodiscard]] const QStringList& newTitles() const { return m_newTitles; }
    /// Chooses an entry, as a click on it does: the last of these titles, each in the submenu of
    /// the one before. False when there is none.
    [[nodiscard]] bool choose(const QString& item, const QStringList& titles);

    [[nodiscard]] bool isHostRegistered() const { return true; }
    [[nodiscard]] int protocolVersion() const { return 0; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString& service);

private Q_SLOTS:
    void menuChanged(const QDBusMessage& message);

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierItemUnregistered(const QString& service);
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    [[nodiscard]] QString menuPath(const QString& item) const;

    QDBusConnection m_bus;
    QStringList m_items;
    QStringList m_newTitles;
};

} // namespace brindlecam::desktop
