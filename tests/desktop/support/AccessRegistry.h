#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QStringList>

#include <atomic>

namespace brindlecam::desktop {

/// What programs speak to about assistive technology: they ask for its bus, announce themselves
/// there, ask what they are to tell, and tell what they show and hide. It answers on a thread of
/// its own, because they wait for the answers while a test may wait for them. All functions: any
/// thread.
class AccessRegistry final : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// Sends programs to the bus at this address.
    explicit AccessRegistry(QString address);

    /// Takes its names on this bus. Aborts the test run when it does not get them.
    void serve(QDBusConnection bus);

    /// Bus names of the programs that have announced themselves, oldest first.
    [[nodiscard]] QStringList programs() const;
    /// Paths of what the program has shown and not hidden since.
    [[nodiscard]] QSet<QString> shownBy(const QString& program) const;
    /// How many keys have come here before they went to a window of their program: none should.
    [[nodiscard]] int detours() const { return m_detours; }

    [[nodiscard]] bool handleMessage(const QDBusMessage& message,
                                     const QDBusConnection& bus) override;
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

private Q_SLOTS:
    void noteState(const QDBusMessage& signal);

private:
    void embed(const QDBusMessage& message, const QDBusConnection& bus);
    [[nodiscard]] QVariant wanted(const QString& program) const;

    const QString m_address;
    std::atomic<int> m_detours = 0;
    mutable QMutex m_mutex;
    QStringList m_programs;
    QHash<QString, QSet<QString>> m_shown; ///< by bus name
};

} // namespace brindlecam::desktop
