#pragma once

#include "desktop/support/AccessRegistry.h"

#include <QDBusConnection>
#include <QThread>

namespace brindlecam::desktop {

/// A session bus on which a program speaks to assistive technology, which is the test. Programs
/// look on their session bus for the address of a bus of its own (Qt 6.4 hears of no other way and
/// ignores AT_SPI_BUS_ADDRESS); here it is the same.
class AccessBus final {
public:
    /// On the bus at this address.
    explicit AccessBus(const QString& address);
    ~AccessBus();
    AccessBus(const AccessBus&) = delete;
    AccessBus& operator=(const AccessBus&) = delete;

    [[nodiscard]] const QDBusConnection& connection() const { return m_connection; }
    [[nodiscard]] const AccessRegistry& registry() const { return m_registry; }
    /// The name of this process on the bus; empty as long as it has not announced itself.
    [[nodiscard]] QString nameOf(qint64 pid) const;

private:
    QDBusConnection m_connection;
    AccessRegistry m_registry;
    QThread m_thread; ///< of the registry
};

} // namespace brindlecam::desktop
