#pragma once

#include "base/Listeners.h"
#include "platform/TrayHosts.h"

#include <QDBusServiceWatcher>
#include <QObject>

namespace brindlecam {

/// Tray hosts of the StatusNotifier kind, which register with a watcher on the session bus. Nothing
/// here waits for another program: answers come through the main loop, so a host that is there from
/// the start is told like one that comes later. Without a session bus there is never a host.
///
/// Qt before 6.7.2 asks for a host once in the life of the process, and never sees one that comes
/// later (QTBUG-94871); so no QSystemTrayIcon is made before there is one. With a newer Qt one icon
/// for good may do; try it with late and restarted hosts before dropping this.
class StatusNotifierHosts final : public QObject, public TrayHosts {
    Q_OBJECT

public:
    StatusNotifierHosts();

    [[nodiscard]] bool available() const override { return m_available; }
    void whenChanged(QObject* context, std::function<void()> changed) override;

private Q_SLOTS:
    /// Asks the watcher whether a host is registered.
    void ask();

private:
    void watcherChanged(const QString& newOwner);
    void setAvailable(bool available);

    Listeners m_listeners;
    bool m_available = false;
    QDBusServiceWatcher m_watcher;
};

} // namespace brindlecam
