// Covers WheelDelta.
#include "base/ScreenInfo.h"
#include "look/WheelDelta.h"
#include "pins/PinGeometry.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

const ScreenInfo kPinScreen{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1,
                            QRect(0, 30, 1920, 1050)};
const ScreenInfo kPinDenseScreen{QStringLiteral("B"), QRect(1920, 0, 2880, 1800), 2,
                                 QRect(1920, 0, 2880, 1800)};

} // namespace

class TestPinGeometry final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aTurnOfTheWheelIsAFactor_data()
    {
        using Unit = WheelDelta::Unit;
        QTest::addColumn<double>("amount");
        QTest::addColumn<Unit>("unit");
        QTest::addColumn<double>("factor");
        QTest::newRow("one notch away") << 1.0 << Unit::notches << 1.05;
        QTest::newRow("one notch towards the user") << -1.0 << Unit::notches << 0.95;
        QTest::newRow("ten notches down shrink by a fifth") << -10.0 << Unit::notches << 0.8;
        QTest::newRow("four notches down are the most") << -4.0 << Unit::notches << 0.8;
        QTest::newRow("ten notches up grow by a fifth") << 10.0 << Unit::notches << 1.2;
        QTest::newRow("part of a notch") << 0.25 << Unit::notches << 1.0125;
        QTest::newRow("ten points of a touchpad") << 10.0 << Unit::points << 1.05;
        QTest::newRow("ten points back") << -10.0 << Unit::points << 0.95;
        QTest::newRow("a long way on a touchpad") << 500.0 << Unit::points << 1.2;
        QTest::newRow("a long way back") << -500.0 << Unit::points << 0.8;
        QTest::newRow("nothing") << 0.0 << Unit::notches << 1.0;
    }
    void aTurnOfTheWheelIsAFactor()
    {
        QFETCH(double, amount);
        QFETCH(WheelDelta::Unit, unit);
        QTEST(PinGeometry::factor({amount, unit}), "factor");
    }

    void zoomKeepsTheCentre()
    {
        const QRectF frame(100, 200, 400, 300);
        const QRectF larger = PinGeometry::zoomed(frame, {400, 300}, 1.05);
        QCOMPARE(larger.size(), QSizeF(420, 315));
        QCOMPARE(larger.center(), frame.center());
    }

    void repeatedZoomStopsAtTheLimits_data()
    {
        QTest::addColumn<QSizeF>("base");
        QTest::addColumn<QSizeF>("least");
        QTest::addColumn<QSizeF>("most");
        QTest::newRow("usual") << QSizeF(400, 300) << QSizeF(80, 60) << QSizeF(1200, 900);
        QTest::newRow("long") << QSizeF(10000, 100) << QSizeF(2000, 20) << QSizeF(30000, 300);
        QTest::newRow("as long as windows may be")
            << QSizeF(16000, 200) << QSizeF(3200, 40) << QSizeF(32000, 400);
        QTest::newRow("tall") << QSizeF(100, 10000) << QSizeF(20, 2000) << QSizeF(300, 30000);
        QTest::newRow("one pixel") << QSizeF(1, 1) << QSizeF(0.2, 0.2) << QSizeF(3, 3);
    }
    void repeatedZoomStopsAtTheLimits()
    {
        QFETCH(QSizeF, base);
        QRectF frame(QPointF(500, 400), base);
        const QPointF centre = frame.center();
        for (int i = 0; i < 100; ++i)
            frame = PinGeometry::zoomed(frame, base, 0.8);
        QTEST(frame.size(), "least");
        for (int i = 0; i < 100; ++i)
            frame = PinGeometry::zoomed(frame, base, 1.2);
        QTEST(frame.size(), "most");
        QVERIFY((frame.center() - centre).manhattanLength() < 1e-6);
    }

    void zoomRestoresTheProportionsOfTheCapture()
    {
        const QRectF frame(0, 0, 400, 77);
        const QRectF zoomed = PinGeometry::zoomed(frame, {400, 300}, 1);
        QCOMPARE(zoomed.size(), QSizeF(400, 300));
        QCOMPARE(zoomed.center(), frame.center());
    }

    void captureWithoutASizeStaysAsItIs()
    {
        const QRectF frame(1, 2, 3, 4);
        QCOMPARE(PinGeometry::zoomed(frame, {}, 1.2), frame);
    }

    void scalingKeepsTheFixedPlace()
    {
        const QRectF frame(100, 100, 400, 200);
        QCOMPARE(PinGeometry::scaled(frame, {200, 150}, 0.5), QRectF(150, 125, 200, 100));
        QCOMPARE(PinGeometry::scaled(frame, frame.topLeft(), 2), QRectF(100, 100, 800, 400));
    }

    void framesAreWholePixelsAndNeverEmpty()
    {
        QCOMPARE(PinGeometry::onPixels({10.5, -10.5, 20.4, 20.6}), QRect(11, -10, 20, 21));
        QCOMPARE(PinGeometry::onPixels({3, 4, 0.2, 0.2}), QRect(3, 4, 1, 1));
    }

    void theCentreDecidesOnWhichScreenAPinIs()
    {
        const std::vector screens{kPinScreen, kPinDenseScreen};
        QCOMPARE(PinGeometry::screenOf({1700, 100, 400, 300}, screens), kPinScreen);
        QCOMPARE(PinGeometry::screenOf({1800, 100, 400, 300}, screens), kPinDenseScreen);
        QCOMPARE(PinGeometry::screenOf({-900, 100, 400, 300}, screens), kPinScreen);
        QCOMPARE(PinGeometry::screenOf({6000, 100, 400, 300}, screens), kPinDenseScreen);
        QVERIFY(!PinGeometry::screenOf({0, 0, 10, 10}, {}));
    }

    void pinThatCanBeSeenStaysWhereItIs_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::newRow("inside") << QRectF(100, 100, 400, 300);
        QTest::newRow("across two screens") << QRectF(1700, 100, 400, 300);
        QTest::newRow("a corner") << QRectF(-376, -276, 400, 300);
        QTest::newRow("smaller than a hand needs") << QRectF(5, 5, 8, 8);
        QTest::newRow("longer than the screen") << QRectF(-4000, 500, 10000, 100);
        QTest::newRow("under a dock") << QRectF(100, 0, 400, 28);
    }
    void pinThatCanBeSeenStaysWhereItIs()
    {
        QFETCH(QRectF, frame);
        QCOMPARE(PinGeometry::reachable(frame, {kPinScreen, kPinDenseScreen}), frame);
        QCOMPARE(PinGeometry::reachable(frame, {}), frame);
    }

    void pinOutOfReachComesToTheNearestScreen_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<QRectF>("reachable");
        QTest::newRow("left") << QRectF(-400, 100, 400, 300) << QRectF(0, 100, 400, 300);
        QTest::newRow("above, below the dock")
            << QRectF(100, -400, 400, 300) << QRectF(100, 30, 400, 300);
        QTest::newRow("below") << QRectF(100, 1070, 400, 300) << QRectF(100, 780, 400, 300);
        QTest::newRow("right of the last")
            << QRectF(9000, 9000, 400, 300) << QRectF(4400, 1500, 400, 300);
        QTest::newRow("long and right of the last")
            << QRectF(9000, 10, 10000, 100) << QRectF(1920, 10, 10000, 100);
    }
    void pinOutOfReachComesToTheNearestScreen()
    {
        QFETCH(QRectF, frame);
        QTEST(PinGeometry::reachable(frame, {kPinScreen, kPinDenseScreen}), "reachable");
    }

    void screensMayLieApart_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QRectF>("reachable");
        const QRectF inTheGap(1500, 300, 200, 100);
        QTest::newRow("nearer to the first")
            << inTheGap << QStringLiteral("A") << QRectF(1080, 300, 200, 100);
        QTest::newRow("nearer to the second")
            << inTheGap.translated(800, 0) << QStringLiteral("B") << QRectF(2560, 300, 200, 100);
        QTest::newRow("across the gap")
            << QRectF(1200, 300, 1500, 100) << QStringLiteral("B") << QRectF(1200, 300, 1500, 100);
    }
    void screensMayLieApart()
    {
        QFETCH(QRectF, frame);
        const std::vector screens{
            ScreenInfo{QStringLiteral("A"), QRect(0, 0, 1280, 800), 1, QRect(0, 0, 1280, 800)},
            ScreenInfo{QStringLiteral("B"), QRect(2560, 0, 2560, 1440), 2,
                       QRect(2560, 0, 2560, 1440)}};
        QTEST(PinGeometry::screenOf(frame, screens).value().id, "screen");
        QTEST(PinGeometry::reachable(frame, screens), "reachable");
    }
};

BRINDLECAM_TEST(TestPinGeometry);

} // namespace brindlecam

#include "tst_pingeometry.moc"
