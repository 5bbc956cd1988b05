#include "desktop/TrayHost.h"
#include "desktop/support/CaptureTest.h"

#include <QFileInfo>

namespace brindlecam::desktop {

/// How the program begins and how it ends, as others see it.
class TestLifetime final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void itIsReachableInEveryWayOnceItHasBegun()
    {
        usePatternedDesktop({.bus = MessageBus::session});
        TrayHost host(desktop());
        startProgram();
        QVERIFY(host.itemComes());
        QVERIFY(host.choose(host.items().front(), {QStringLiteral("Capturar pantalla completa")}));
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
        QVERIFY(toastIsGone());
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 0);
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(openArea());
    }

    void quittingDropsACountdownAndItsCapture()
    {
        usePatternedDesktop({.bus = MessageBus::session});
        TrayHost host(desktop());
        startProgram();
        QVERIFY(host.itemComes());
        QVERIFY(
            host.choose(host.items().front(), {QStringLiteral("Capturar con retraso"),
                                               QStringLiteral("Pantalla completa en 3 segundos")}));
        QVERIFY(toastComes());
        QCOMPARE(program().quit(), 0);
        QVERIFY(toasts().empty());
        QVERIFY(history().isEmpty());
        QVERIFY(captures().isEmpty());
        QVERIFY(!clipboardIsTaken());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestLifetime)

#include "tst_lifetime.moc"
