#include "canvas/WheelSteps.h"
#include "support/TestCase.h"

#include <limits>

namespace brindlecam {

class TestWheelSteps final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void partsOfANotchAddUp()
    {
        WheelSteps steps;
        QCOMPARE(steps.add(0.4), 0);
        QCOMPARE(steps.add(0.4), 0);
        QCOMPARE(steps.add(0.4), 1);
        QCOMPARE(steps.add(0.75), 0); // 0.2 were left
        QCOMPARE(steps.add(0.25), 1);
    }

    void wholePartsGoTowardsZeroBothWays()
    {
        WheelSteps steps;
        QCOMPARE(steps.add(1.75), 1);
        QCOMPARE(steps.add(-1.5), 0); // 0.75 - 1.5 is less than a step down
        QCOMPARE(steps.add(-0.25), -1);
        QCOMPARE(steps.add(-2.5), -2);
    }

    void nothingMovesNothing()
    {
        WheelSteps steps;
        QCOMPARE(steps.add(0), 0);
        QCOMPARE(steps.add(0.5), 0);
        QCOMPARE(steps.add(0), 0);
        QCOMPARE(steps.add(0.5), 1);
    }

    void hugeMovementsAreCountedAndForgotten()
    {
        WheelSteps steps;
        QCOMPARE(steps.add(10000), 10000);
        QCOMPARE(steps.add(-10000), -10000);
        QCOMPARE(steps.add(1e300), 1000000);
        QCOMPARE(steps.add(-1e300), -1000000);
        QCOMPARE(steps.add(1), 1);
    }

    void whatIsNoNumberCountsAsNothing()
    {
        WheelSteps steps;
        QCOMPARE(steps.add(std::numeric_limits<qreal>::quiet_NaN()), 0);
        QCOMPARE(steps.add(std::numeric_limits<qreal>::infinity()), 0);
        QCOMPARE(steps.add(1), 1);
    }

    void markerOpacityMovesFivePercentAStepBothWays()
    {
        for (int percent = 10; percent <= 100; percent += 5) {
            const double opacity = percent / 100.0;
            QCOMPARE(markerOpacityAfter(1, opacity), std::min(percent + 5, 100) / 100.0);
            QCOMPARE(markerOpacityAfter(-1, opacity), std::max(percent - 5, 10) / 100.0);
            QCOMPARE(markerOpacityAfter(0, opacity), opacity);
        }
        QCOMPARE(markerOpacityAfter(1, 0.4), 0.45);
        QCOMPARE(markerOpacityAfter(-1, 0.4), 0.35);
    }

    void markerOpacityWalksThroughItsWholeRangeAndBack()
    {
        double opacity = 0.1;
        for (int step = 1; step <= 18; ++step)
            opacity = markerOpacityAfter(1, opacity);
        QCOMPARE(opacity, 1.0);
        for (int step = 1; step <= 18; ++step)
            opacity = markerOpacityAfter(-1, opacity);
        QCOMPARE(opacity, 0.1);
    }

    void markerOpacityStaysBetween10And100Percent()
    {
        QCOMPARE(markerOpacityAfter(10000, 0.4), 1.0);
        QCOMPARE(markerOpacityAfter(-10000, 0.4), 0.1);
        QCOMPARE(markerOpacityAfter(std::numeric_limits<int>::max(), 1), 1.0);
        QCOMPARE(markerOpacityAfter(std::numeric_limits<int>::min(), 0.1), 0.1);
    }

    void anOpacityBetweenTwoStepsGoesDownToTheGrid()
    {
        QCOMPARE(markerOpacityAfter(1, 0.42), 0.45);
        QCOMPARE(markerOpacityAfter(-1, 0.42), 0.35);
    }
};

BRINDLECAM_TEST(TestWheelSteps);

} // namespace brindlecam

#include "tst_wheelsteps.moc"
