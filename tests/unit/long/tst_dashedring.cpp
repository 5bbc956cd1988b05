#include "long/DashedRing.h"
#include "support/TestCase.h"

#include <QRegion>

#include <cmath>
#include <vector>

namespace brindlecam {

namespace {

struct Measured {
    qreal scale;
    int gap; ///< pixels
    int width;
};

QRegion regionOf(const std::vector<QRect>& strokes)
{
    QRegion region;
    for (const QRect& stroke : strokes)
        region += stroke;
    return region;
}

qreal areaOf(const QRegion& region)
{
    qreal area = 0;
    for (const QRect& rect : region)
        area += qreal(rect.width()) * rect.height();
    return area;
}

} // namespace

class TestDashedRing final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void runsOneToThreePointsOutsideOfTheRectangle_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("gap");
        QTest::addColumn<int>("width");
        for (const Measured& is : {Measured{1, 1, 2}, Measured{1.25, 1, 3}, Measured{1.5, 2, 3},
                                   Measured{1.75, 2, 4}, Measured{2, 2, 4}, Measured{3, 3, 6}})
            QTest::addRow("%.2f", is.scale) << is.scale << is.gap << is.width;
    }
    void runsOneToThreePointsOutsideOfTheRectangle()
    {
        QFETCH(qreal, scale);
        QFETCH(int, gap);
        QFETCH(int, width);
        for (const QSize size : {QSize(1, 1), QSize(80, 120), QSize(401, 303), QSize(3000, 7)}) {
            const QRect captured(QPoint(10, 20), size);
            const QRegion strokes = regionOf(DashedRing::strokesAround(captured, scale));
            const QRect inner = captured.adjusted(-gap, -gap, gap, gap);
            QVERIFY(!strokes.intersects(inner));
            const QRect outer = inner.adjusted(-width, -width, width, width);
            QCOMPARE(strokes.boundingRect(), outer);
        }
    }

    void eightPointsAreOnAndFiveOff_data()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0})
            QTest::addRow("%.2f", scale) << scale;
    }
    void eightPointsAreOnAndFiveOff()
    {
        QFETCH(qreal, scale);
        const QRect captured(100, 100, 600, 400);
        const auto strokes = DashedRing::strokesAround(captured, scale);
        const int width = qRound(2 * scale);
        const int reach = qRound(scale) + width;
        std::vector<QRect> above;
        for (const QRect& stroke : strokes) {
            if (stroke.right() >= captured.right())
                break; // where they bend
            above.push_back(stroke);
        }
        QVERIFY(above.size() > 20);
        // Counted along the middle of the line, from its corner on.
        const int begin = captured.left() - reach + width / 2;
        for (std::size_t i = 1; i < above.size(); ++i) {
            const qreal at = static_cast<qreal>(i) * 13 * scale;
            QCOMPARE(above[i].left(), begin + qRound(at));
            QCOMPARE(above[i].width(), qRound(at + 8 * scale) - qRound(at));
        }
        const QRect outer = captured.adjusted(-reach, -reach, reach, reach);
        const QRect inner = outer.adjusted(width, width, -width, -width);
        const qreal covered = areaOf(regionOf(strokes)) / areaOf(QRegion(outer) - inner);
        QVERIFY2(std::abs(covered - 8.0 / 13) < 0.01, qPrintable(QString::number(covered)));
    }

    // The middle of the line is 10 points wide and 26 high.
    void dashesBendAroundCorners()
    {
        const std::vector<QRect> expected{
            {-3, -3, 9, 2},                 // begins in the corner
            {7, 1, 2, 8},   {7, 14, 2, 8},  // down the right side
            {-3, 23, 8, 2}, {-3, 23, 2, 2}, // below, and around the corner
            {-3, 10, 2, 8},                 // up the left side
            {-3, -3, 2, 8},                 // and to the corner where it began
        };
        QCOMPARE(DashedRing::strokesAround({0, 0, 6, 22}, 1), expected);
    }
};

BRINDLECAM_TEST(TestDashedRing);

} // namespace brindlecam

#include "tst_dashedring.moc"
