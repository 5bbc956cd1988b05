#include "desktop/support/x11/X11Input.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/desktop/X11Displays.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"
#include "x11/ports/Monitors.h"

#include <QGuiApplication>

namespace brindlecam {

using test::Monitors;

class TestDisplays final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void oneScreenIsTheWholeDesktop()
    {
        const auto screens = X11Displays().screens();
        QCOMPARE(screens.size(), std::size_t(1));
        QCOMPARE(screens[0].id, QStringLiteral("screen"));
        QCOMPARE(screens[0].native, QRect(0, 0, 1600, 900));
        QCOMPARE(screens[0].visibleFrame, screens[0].native);
        QCOMPARE(screens[0].scale, 1.0);
    }

    void monitorsKeepTheirPixelsAndScales()
    {
        const Monitors monitors;
        const auto screens = X11Displays().screens();
        QCOMPARE(screens.size(), std::size_t(2));
        QCOMPARE(screens[0],
                 (ScreenInfo{QStringLiteral("LEFT"), Monitors::kLeft, 1, Monitors::kLeft}));
        QCOMPARE(screens[1],
                 (ScreenInfo{QStringLiteral("RIGHT"), Monitors::kRight, 1.5, Monitors::kRight}));
    }

    void strutsShrinkOnlyTheirMonitor_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVector<quint32>>("values");
        QTest::addColumn<QRect>("left");
        QTest::addColumn<QRect>("right");
        QTest::newRow("part of an edge")
            << QByteArrayLiteral("_NET_WM_STRUT_PARTIAL")
            << QVector<quint32>{0, 0, 130, 0, 0, 0, 0, 0, 800, 1439, 0, 0} << Monitors::kLeft
            << QRect(800, 130, 640, 450);
        QTest::newRow("whole edge")
            << QByteArrayLiteral("_NET_WM_STRUT") << QVector<quint32>{0, 0, 40, 0}
            << QRect(0, 40, 800, 560) << Monitors::kRight;
        QTest::newRow("cut short")
            << QByteArrayLiteral("_NET_WM_STRUT_PARTIAL") << QVector<quint32>{0, 0, 40}
            << Monitors::kLeft << Monitors::kRight;
    }
    void strutsShrinkOnlyTheirMonitor()
    {
        QFETCH(QByteArray, property);
        QFETCH(QVector<quint32>, values);
        QFETCH(QRect, left);
        QFETCH(QRect, right);
        const Monitors monitors;
        test::Client client;
        // Half of the panels on a desktop place themselves, half are managed.
        for (const bool unmanaged : {true, false}) {
            const auto panel = client.show({.rect = QRect(800, 100, 640, 30),
                                            .unmanaged = unmanaged,
                                            .type = "_NET_WM_WINDOW_TYPE_DOCK"});
            client.setNumbers(panel, property, {values.begin(), values.end()});
            QTRY_COMPARE(X11Displays().screens()[0].visibleFrame, left);
            QTRY_COMPARE(X11Displays().screens()[1].visibleFrame, right);
            QCOMPARE(X11Displays().layout()[0].visibleFrame, Monitors::kLeft);
            QCOMPARE(X11Displays().layout()[1].visibleFrame, Monitors::kRight);
            client.destroy(panel);
            QTRY_COMPARE(X11Displays().screens()[0].visibleFrame, Monitors::kLeft);
            QTRY_COMPARE(X11Displays().screens()[1].visibleFrame, Monitors::kRight);
        }
    }

    void strutsOfUnmanagedWindowsThatAreNoDocksDoNotCount()
    {
        test::Client client;
        const auto window = client.show({.unmanaged = true});
        client.setNumbers(window, "_NET_WM_STRUT", {0, 0, 40, 0});
        QCOMPARE(X11Displays().screens()[0].visibleFrame, QRect(0, 0, 1600, 900));
    }

    void pointerIsToldInNativePixels()
    {
        const Monitors monitors;
        desktop::X11Input(test::display()).moveTo({1203, 407});
        QCOMPARE(X11Displays().pointer(), std::optional(QPoint(1203, 407)));
    }

    void aBurstOfChangesIsToldOnce()
    {
        X11Displays displays;
        int changes = 0;
        displays.whenChanged(this, [&] { ++changes; });
        for (int i = 0; i < 5; ++i)
            Q_EMIT qGuiApp->primaryScreenChanged(QGuiApplication::primaryScreen());
        QCOMPARE(changes, 0);
        QTRY_COMPARE(changes, 1);
        QCoreApplication::processEvents();
        QCOMPARE(changes, 1);
    }

    void monitorsThatComeAndGoAreTold()
    {
        X11Displays displays;
        int changes = 0;
        displays.whenChanged(this, [&] { ++changes; });
        {
            const Monitors monitors;
            QTRY_VERIFY(changes > 0);
            QCOMPARE(displays.screens().size(), std::size_t(2));
            changes = 0;
        }
        QTRY_VERIFY(changes > 0);
        QCOMPARE(displays.screens().size(), std::size_t(1));
    }
};

BRINDLECAM_TEST(TestDisplays);

} // namespace brindlecam

#include "tst_displays.moc"
