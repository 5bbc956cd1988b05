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

        QTest::newRow("scale 1 keeps whole points")
            << QRectF(10, 20, 30, 40) << QSizeF(100, 100) << QSize(100, 100)
            << QRect(10, 20, 30, 40);
        QTest::newRow("scale 2 doubles")
            << QRectF(10, 20, 30, 40) << QSizeF(100, 100) << QSize(200, 200)
            << QRect(20, 40, 60, 80);
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
