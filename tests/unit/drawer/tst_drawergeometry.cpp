#include "drawer/DrawerGeometry.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestDrawerGeometry final : public test::TestCase {
    Q_OBJECT

private:
    /// A screen of so many pixels, with docks of 40 points below and 60 on the left.
    [[nodiscard]] static ScreenInfo screen(QSize pixels, qreal scale = 1, QPoint at = {})
    {
        const int below = qRound(40 * scale);
        const int left = qRound(60 * scale);
        return {QStringLiteral("A"), QRect(at, pixels), scale,
                QRect(at + QPoint(left, 0), pixels - QSize(left, below))};
    }

private Q_SLOTS:
    void isAsWideAsItsTiles_data()
    {
        QTest::addColumn<int>("entries");
        QTest::addColumn<qreal>("content");
        QTest::addColumn<qreal>("panel"); // where 1860 points are free
        QTest::newRow("none") << 0 << 640.0 << 672.0;
        QTest::newRow("one") << 1 << 640.0 << 672.0;
        QTest::newRow("two: less than the header needs") << 2 << 640.0 << 672.0;
        QTest::newRow("three: a little more than that") << 3 << 654.0 << 686.0;
        QTest::newRow("eight") << 8 << 1764.0 << 1796.0;
        QTest::newRow("nine do not fit") << 9 << 1986.0 << 1820.0;
        QTest::newRow("twenty") << 20 << 4428.0 << 1820.0;
    }
    void isAsWideAsItsTiles()
    {
        QFETCH(int, entries);
        QFETCH(qreal, content);
        QFETCH(qreal, panel);
        QCOMPARE(DrawerGeometry::contentWidth(entries), content);
        QCOMPARE(DrawerGeometry::panelWidth(entries, screen({1920, 1080})), panel);
    }

    void seesAsManyTilesAsReachIntoIt()
    {
        const ScreenInfo wide = screen({1920, 1080});
        QCOMPARE(DrawerGeometry::tilesInSight(0, wide), 0);
        QCOMPARE(DrawerGeometry::tilesInSight(2, wide), 2);
        QCOMPARE(DrawerGeometry::tilesInSight(3, wide), 3);
        QCOMPARE(DrawerGeometry::tilesInSight(20, wide), 9); // the last one cut
    }

    void standsAboveTheFreePartsLowerEdgeInItsMiddle_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<int>("entries");
        QTest::addColumn<QRect>("open");
        QTest::newRow("full HD") << screen({1920, 1080}) << 0 << QRect(654, 814, 672, 212);
        QTest::newRow("full HD, too many")
            << screen({1920, 1080}) << 20 << QRect(80, 814, 1820, 212);
        QTest::newRow("scale 2, elsewhere")
            << screen({2880, 1800}, 2, {1920, 100}) << 0 << QRect(2748, 1368, 1344, 424);
        QTest::newRow("a narrow one") << screen({600, 400}) << 0 << QRect(80, 134, 500, 212);
    }
    void standsAboveTheFreePartsLowerEdgeInItsMiddle()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(int, entries);
        QFETCH(QRect, open);
        const auto places = DrawerGeometry::places(entries, screen, {screen});
        QCOMPARE(places.open, open);
        QCOMPARE(places.below, open.translated(0, qRound(242 * screen.scale)));
        QVERIFY(places.slides);
        QVERIFY(!screen.visibleFrame.intersects(places.below));
    }

    void doesNotSlideOverAScreenBelow()
    {
        const ScreenInfo above = screen({1920, 1080});
        ScreenInfo below = screen({1920, 1080}, 1, {0, 1080});
        below.id = QStringLiteral("B");
        QVERIFY(!DrawerGeometry::places(3, above, {above, below}).slides);
        QVERIFY(DrawerGeometry::places(3, below, {above, below}).slides);
        ScreenInfo beside = screen({1920, 1080}, 1, {1920, 0});
        beside.id = QStringLiteral("B");
        QVERIFY(DrawerGeometry::places(3, above, {above, beside}).slides);
    }
};

BRINDLECAM_TEST(TestDrawerGeometry);

} // namespace brindlecam

#include "tst_drawergeometry.moc"
