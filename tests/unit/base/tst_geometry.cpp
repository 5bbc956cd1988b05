// Covers ScreenInfo.
#include "base/Geometry.h"
#include "base/ScreenInfo.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestGeometry final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pixelRectsAreRoundedOutward_data()
    {
        QTest::addColumn<QRectF>("points");
        QTest::addColumn<QSizeF>("canvas");
        QTest::addColumn<QSize>("image");
        QTest::addColumn<QRect>("expected");

        QTest::newRow("scale 1 keeps whole points") << QRectF(10, 20, 30, 40) << QSizeF(100, 100)
                                                    << QSize(100, 100) << QRect(10, 20, 30, 40);
        QTest::newRow("scale 2 doubles") << QRectF(10, 20, 30, 40) << QSizeF(100, 100)
                                         << QSize(200, 200) << QRect(20, 40, 60, 80);
        QTest::newRow("scale 1.5 takes in halves")
            << QRectF(1, 1, 1, 1) << QSizeF(100, 100) << QSize(150, 150) << QRect(1, 1, 2, 2);
        QTest::newRow("a ratio just under a whole pixel adds none")
            << QRectF(0, 0, 100, 100) << QSizeF(1366 / 1.1, 768 / 1.1) << QSize(1366, 768)
            << QRect(0, 0, 110, 110);
        QTest::newRow("the whole of an odd screen is all its pixels")
            << QRectF(0, 0, 1366 / 1.5, 768 / 1.5) << QSizeF(1366 / 1.5, 768 / 1.5)
            << QSize(1366, 768) << QRect(0, 0, 1366, 768);
    }
    void pixelRectsAreRoundedOutward()
    {
        QFETCH(QRectF, points);
        QFETCH(QSizeF, canvas);
        QFETCH(QSize, image);
        QTEST(pixelRect(points, canvas, image), "expected");
    }

    void pixelsPerPointFollowTheTwoSizesOnEachAxis()
    {
        const PixelsPerPoint ratio = pixelsPerPoint(QSizeF(100, 50), QSize(150, 100));
        QCOMPARE(ratio.x, 1.5);
        QCOMPARE(ratio.y, 2.0);
    }

    void emptyCanvasCountsAsOnePixelPerPoint()
    {
        const PixelsPerPoint ratio = pixelsPerPoint(QSizeF(), QSize(150, 100));
        QCOMPARE(ratio.x, 1.0);
        QCOMPARE(ratio.y, 1.0);
    }

    void roundingOutwardTakesInWhatIsTouched_data()
    {
        QTest::addColumn<QRectF>("rect");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("whole stays") << QRectF(2, 3, 4, 5) << QRect(2, 3, 4, 5);
        QTest::newRow("both edges inside") << QRectF(2.4, 3.6, 0.2, 0.2) << QRect(2, 3, 1, 1);
        QTest::newRow("across an edge") << QRectF(2.6, 3, 1, 1) << QRect(2, 3, 2, 1);
        QTest::newRow("left of the origin") << QRectF(-1.5, -0.5, 1, 1) << QRect(-2, -1, 2, 2);
        QTest::newRow("a millionth is nothing")
            << QRectF(1.9999999, 2, 2.0000001, 1) << QRect(2, 2, 2, 1);
        QTest::newRow("a thousandth is something")
            << QRectF(1.999, 2, 2.002, 1) << QRect(1, 2, 4, 1);
        QTest::newRow("no size on a whole unit") << QRectF(3, 4, 0, 0) << QRect(3, 4, 0, 0);
    }
    void roundingOutwardTakesInWhatIsTouched()
    {
        QFETCH(QRectF, rect);
        QTEST(roundedOutward(rect), "expected");
    }

    void pixelUnderAPointIsTheOneItLiesIn_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<QPoint>("pixel");
        QTest::newRow("origin") << QPointF(0, 0) << QPoint(0, 0);
        QTest::newRow("first half point") << QPointF(0.49, 0.49) << QPoint(0, 0);
        QTest::newRow("second half point") << QPointF(0.5, 0.5) << QPoint(1, 1);
        QTest::newRow("far corner") << QPointF(99.9, 49.9) << QPoint(199, 99);
        QTest::newRow("left of the canvas") << QPointF(-0.1, 0) << QPoint(-1, 0);
    }
    void pixelUnderAPointIsTheOneItLiesIn()
    {
        QFETCH(QPointF, point);
        QTEST(pixelAt(point, QSizeF(100, 50), QSize(200, 100)), "pixel");
    }

    void clampedPointsStayOnTheEdge_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<QPointF>("expected");
        QTest::newRow("inside") << QPointF(15, 25) << QPointF(15, 25);
        QTest::newRow("beyond left and top") << QPointF(-5, 3) << QPointF(10, 20);
        QTest::newRow("beyond right and bottom") << QPointF(500, 500) << QPointF(40, 60);
        QTest::newRow("on the far edge") << QPointF(40, 60) << QPointF(40, 60);
    }
    void clampedPointsStayOnTheEdge()
    {
        QFETCH(QPointF, point);
        QTEST(clamped(point, QRectF(10, 20, 30, 40)), "expected");
    }

    void cornersInAnyOrderSpanTheSameRectangle()
    {
        const QRectF expected(10, 20, 30, 40);
        QCOMPARE(spanned({10, 20}, {40, 60}), expected);
        QCOMPARE(spanned({40, 60}, {10, 20}), expected);
        QCOMPARE(spanned({40, 20}, {10, 60}), expected);
        QCOMPARE(spanned({10, 60}, {40, 20}), expected);
        QVERIFY(spanned({5, 5}, {5, 5}).isEmpty());
    }

    void screenSizeInPointsIsReal()
    {
        const ScreenInfo screen{QStringLiteral("A"), QRect(0, 0, 1366, 768), 1.5, {}};
        QCOMPARE(screen.size(), QSizeF(1366 / 1.5, 512));
    }

    void nativePointsAreTakenFromTheScreensCorner()
    {
        const ScreenInfo right{QStringLiteral("RIGHT"), QRect(1920, 100, 2560, 1440), 2, {}};
        QCOMPARE(right.toPoints(QPoint(1920, 100)), QPointF(0, 0));
        QCOMPARE(right.toPoints(QPoint(1921, 100)), QPointF(0.5, 0));
        QCOMPARE(right.toPoints(QPoint(1900, 100)), QPointF(-10, 0));
    }

    void pointsBecomeNativePixelsOfTheDesktop()
    {
        const ScreenInfo right{QStringLiteral("RIGHT"), QRect(1920, 100, 2560, 1440), 1.5, {}};
        QCOMPARE(right.toNative(QRectF(10, 20, 30, 40)), QRect(1935, 130, 45, 60));
        QCOMPARE(right.toNative(QRectF(1, 1, 1, 1)), QRect(1921, 101, 2, 2));
    }

    void nativeRectangleSurvivesTheWayThroughPoints_data()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.6667})
            QTest::addRow("scale %g", scale) << scale;
    }
    void nativeRectangleSurvivesTheWayThroughPoints()
    {
        QFETCH(qreal, scale);
        const ScreenInfo screen{QStringLiteral("A"), QRect(-1080, 300, 1080, 1920), scale, {}};
        const QRect window(-1003, 417, 531, 777);
        QCOMPARE(screen.toNative(screen.toPoints(window)), window);
        QCOMPARE(screen.toNative(QRectF(QPointF(), screen.size())), screen.native);
    }

    void windowAcrossTwoScreensIsClippedNativelyBeforeItBecomesPoints()
    {
        const ScreenInfo left{QStringLiteral("LEFT"), QRect(0, 0, 1920, 1080), 1.5, {}};
        const ScreenInfo right{QStringLiteral("RIGHT"), QRect(1920, 0, 1280, 720), 1, {}};
        const QRect window(1800, 300, 300, 150);
        QCOMPARE(left.toPoints(window), QRectF(1200, 200, 80, 100));
        QCOMPARE(right.toPoints(window), QRectF(0, 300, 180, 150));
        QVERIFY(right.toPoints(QRect(0, 0, 100, 100)).isEmpty());
    }
};

BRINDLECAM_TEST(TestGeometry);

} // namespace brindlecam

#include "tst_geometry.moc"
