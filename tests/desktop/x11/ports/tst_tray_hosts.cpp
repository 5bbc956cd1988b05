// Covers LinuxTrayHosts, OwnerWatch, StatusNotifierHosts, XEmbedTrayHosts.
#include "platform/linux/LinuxTrayHosts.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/StatusNotifierHosts.h"
#include "platform/x11/desktop/XEmbedTrayHosts.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace brindlecam {

/// A StatusNotifier watcher of another program, on a connection of its own.
class FakeWatcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    explicit FakeWatcher(bool host)
        : m_host(host)
        , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                              QStringLiteral("fake watcher")))
    {
        m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                             QDBusConnection::ExportAllContents);
        if (!m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher")))
            qWarning("the watcher's name is taken");
    }
    ~FakeWatcher() override { QDBusConnection::disconnectFromBus(QStringLiteral("fake watcher")); }

    [[nodiscard]] bool hasHost() const { return m_host; }
    void setHost(bool host)
    {
        m_host = host;
        if (host)
            Q_EMIT StatusNotifierHostRegistered();
        else
            Q_EMIT StatusNotifierHostUnregistered();
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    bool m_host;
    QDBusConnection m_bus;
};

class TestTrayHosts final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SessionBus::neverLaunch(); } // as the program does

    void classicTrayIsNoticedWheneverItComesAndGoes()
    {
        XEmbedTrayHosts hosts;
        int changes = 0;
        hosts.whenChanged(this, [&] { ++changes; });
        QVERIFY(!hosts.available());
        test::Client client;
        client.takeSelection(kTray, client.show({.unmanaged = true}));
        QTRY_COMPARE(changes, 1);
        QVERIFY(hosts.available());
        QVERIFY(XEmbedTrayHosts().available());
        client.dropSelection(kTray);
        QTRY_COMPARE(changes, 2);
        QVERIFY(!hosts.available());
    }

    void classicTrayThatIsReplacedIsTold()
    {
        test::Client client;
        client.takeSelection(kTray, client.show({.unmanaged = true}));
        XEmbedTrayHosts hosts;
        int changes = 0;
        hosts.whenChanged(this, [&] { ++changes; });
        client.takeSelection(kTray, client.show({.unmanaged = true}));
        QTRY_COMPARE(changes, 1);
        QVERIFY(hosts.available());
    }

    void classicTrayThatCrashesIsGone()
    {
        std::optional<test::Client> client(std::in_place);
        client->takeSelection(kTray, client->show({.unmanaged = true}));
        const XEmbedTrayHosts hosts;
        QVERIFY(hosts.available());
        client.reset();
        QTRY_VERIFY(!hosts.available());
    }

    void withoutASessionBusThereIsNoNotifierHost()
    {
        if (hasBus())
            QSKIP("a session bus runs");
        StatusNotifierHosts hosts;
        hosts.whenChanged(this, [] { QFAIL("there is nothing to tell"); });
        QCoreApplication::processEvents();
        QVERIFY(!hosts.available());
    }

    void notifierHostThatIsThereFromTheStartIsTold()
    {
        if (!hasBus())
            QSKIP("no session bus");
        const FakeWatcher watcher(true);
        StatusNotifierHosts hosts;
        int changes = 0;
        hosts.whenChanged(this, [&] { ++changes; });
        QTRY_COMPARE(changes, 1);
        QVERIFY(hosts.available());
    }

    void notifierHostThatComesLaterIsTold()
    {
        if (!hasBus())
            QSKIP("no session bus");
        StatusNotifierHosts hosts;
        int changes = 0;
        hosts.whenChanged(this, [&] { ++changes; });
        FakeWatcher watcher(false);
        watcher.setHost(true);
        QTRY_COMPARE(changes, 1);
        QVERIFY(hosts.available());
        watcher.setHost(false);
        QTRY_COMPARE(changes, 2);
        QVERIFY(!hosts.available());
    }

    void notifierWatcherThatEndsAndComesBackIsTold()
    {
        if (!hasBus())
            QSKIP("no session bus");
        std::optional<FakeWatcher> watcher(std::in_place, true);
        StatusNotifierHosts hosts;
        int changes = 0;
        hosts.whenChanged(this, [&] { ++changes; });
        QTRY_VERIFY(hosts.available());
        watcher.reset();
        QTRY_VERIFY(!hosts.available());
        watcher.emplace(true);
        QTRY_VERIFY(hosts.available());
        QCOMPARE(changes, 3);
    }

    void anyKindOfHostMakesATray()
    {
        std::vector<std::unique_ptr<TrayHosts>> kinds;
        kinds.push_back(std::make_unique<StatusNotifierHosts>());
        kinds.push_back(std::make_unique<XEmbedTrayHosts>());
        LinuxTrayHosts hosts(std::move(kinds));
        int changes = 0;
        hosts.whenChanged(this, [&] { ++changes; });
        QVERIFY(!hosts.available());
        test::Client client;
        client.takeSelection(kTray, client.show({.unmanaged = true}));
        QTRY_COMPARE(changes, 1);
        QVERIFY(hosts.available());
    }

private:
    static bool hasBus() { return QDBusConnection::sessionBus().isConnected(); }

    static constexpr const char* kTray = "_NET_SYSTEM_TRAY_S0";
};

BRINDLECAM_TEST(TestTrayHosts);

} // namespace brindlecam

#include "tst_tray_hosts.moc"
