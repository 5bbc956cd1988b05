#include "base/RepaintArea.h"
#include "support/TestCase.h"

#include <cmath>

namespace brindlecam {

class TestRepaintArea final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void edgesLieOnWholeDevicePixels_data()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.25, 1.5, 1.75, 2.0})
            QTest::addRow("%.2f", scale) << scale;
    }
    void edgesLieOnWholeDevicePixels()
    {
        QFETCH(qreal, scale);
        const QRectF rect(13.3, 27.9, 101.2, 55.5);
        const QRect area = repaintArea(rect, scale);
        QVERIFY(QRectF(area).contains(rect));
        for (const int edge : {area.left(), area.top(), area.right() + 1, area.bottom() + 1})
            QCOMPARE(edge * scale, std::round(edge * scale));
        QVERIFY(area.width() < rect.width() + 10);
    }

    void movingHoleRepaintsEveryPointOnlyOneOfThemCovers_data()
    {
        QTest::addColumn<QRectF>("before");
        QTest::addColumn<QRectF>("after");
        QTest::newRow("grown") << QRectF(10, 10, 50, 50) << QRectF(10, 10, 80, 70);
        QTest::newRow("moved") << QRectF(10, 10, 50, 50) << QRectF(33.5, 20.25, 50, 50);
        QTest::newRow("apart") << QRectF(10, 10, 20, 20) << QRectF(60, 60, 20, 20);
        QTest::newRow("from nothing") << QRectF() << QRectF(5, 5, 40, 40);
        QTest::newRow("to nothing") << QRectF(5, 5, 40, 40) << QRectF();
        QTest::newRow("inside") << QRectF(10, 10, 80, 80) << QRectF(30, 30, 20.5, 20.5);
    }
    void movingHoleRepaintsEveryPointOnlyOneOfThemCovers()
    {
        QFETCH(QRectF, before);
        QFETCH(QRectF, after);
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
            const QRegion area = repaintAreaBetween(before, after, scale);
            for (int y = 0; y < 100; ++y) {
                for (int x = 0; x < 100; ++x) {
                    const QRectF unit(x, y, 1, 1);
                    const bool differs = before.contains(unit) != after.contains(unit) ||
                                         before.intersects(unit) != after.intersects(unit);
                    if (differs && !area.contains(QPoint(x, y)))
                        QFAIL(qPrintable(QStringLiteral("%1,%2 is left stale").arg(x).arg(y)));
                }
            }
        }
    }

    void aLargeHoleThatGrowsALittleRepaintsOnlyItsRim()
    {
        const QRegion area = repaintAreaBetween({100, 100, 1000, 800}, {100, 100, 1004, 804}, 1);
        qint64 points = 0;
        for (const QRect& rect : area)
            points += qint64(rect.width()) * rect.height();
        QVERIFY(points < 20000);
    }
};

BRINDLECAM_TEST(TestRepaintArea);

} // namespace brindlecam

#include "tst_repaintarea.moc"
