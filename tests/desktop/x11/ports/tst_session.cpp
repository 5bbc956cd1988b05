// Covers ServerProbe.
#include "platform/linux/SessionBus.h"
#include "platform/x11/X11Platform.h"
#include "support/TestCase.h"

#include <QDBusConnection>

namespace brindlecam {

/// What the session is found to be, where something answers.
class TestSession final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SessionBus::neverLaunch(); } // as the program does

    void aServerOnItsOwnIsNoGuest()
    {
        QCOMPARE(X11Platform::askServer(), Session::XServer::itself);
    }

    void aServerThatIsNotThereIsSilent()
    {
        const QByteArray here = qgetenv("DISPLAY");
        qputenv("DISPLAY", "/nonexistent:1");
        const Session::XServer found = X11Platform::askServer();
        qputenv("DISPLAY", here);
        QCOMPARE(found, Session::XServer::silent);
    }

    void namesOnTheBusAreKnownWhereThereIsOne()
    {
        const QString name = QStringLiteral("io.halvick.Brindlecam.Test");
        QVERIFY(!SessionBus::hasName(name));
        QDBusConnection bus = QDBusConnection::sessionBus();
        QCOMPARE(SessionBus::hasName(QStringLiteral("org.freedesktop.DBus")), bus.isConnected());
        if (!bus.isConnected())
            return;
        QVERIFY(bus.registerService(name));
        QVERIFY(SessionBus::hasName(name));
        QVERIFY(bus.unregisterService(name));
        QVERIFY(!SessionBus::hasName(name));
    }
};

BRINDLECAM_TEST(TestSession);

} // namespace brindlecam

#include "tst_session.moc"
