#include "canvas/Selection.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr QSizeF kSelectionCanvas(800, 600);

void dragOut(Selection& selection, QPointF from, QPointF to)
{
    (void)selection.press(from, Selection::Drawn::nothing);
    selection.dragTo(to);
    selection.release();
}

Selection selected(const QRectF& rect)
{
    Selection selection(kSelectionCanvas);
    dragOut(selection, rect.topLeft(), rect.bottomRight());
    return selection;
}

} // namespace

class TestSelection final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void startsEmptyAndAtRest()
    {
        const Selection selection(kSelectionCanvas);
        QVERIFY(selection.isEmpty());
        QVERIFY(!selection.isDragging());
        QVERIFY(!selection.hoveredWindow());
        QCOMPARE(selection.hole(), QRectF());
    }

    void dragSelectsTheRectangleBetweenItsEnds_data()
    {
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("down and right")
            << QPointF(10, 20) << QPointF(110, 70) << QRectF(10, 20, 100, 50);
        QTest::newRow("up and left")
            << QPointF(110, 70) << QPointF(10, 20) << QRectF(10, 20, 100, 50);
        QTest::newRow("fractions grow to whole points")
            << QPointF(10.4, 20.6) << QPointF(110.2, 70.1) << QRectF(10, 20, 101, 51);
        QTest::newRow("beyond the screen stops at its edge")
            << QPointF(700, 500) << QPointF(2000, 2000) << QRectF(700, 500, 100, 100);
        QTest::newRow("exactly three points are a selection")
            << QPointF(10, 10) << QPointF(13, 13) << QRectF(10, 10, 3, 3);
    }
    void dragSelectsTheRectangleBetweenItsEnds()
    {
        QFETCH(QPointF, from);
        QFETCH(QPointF, to);
        Selection selection(kSelectionCanvas);
        dragOut(selection, from, to);
        QTEST(selection.rect(), "expected");
    }

    void clickOnNothingLeavesNothingSelected()
    {
        Selection selection(kSelectionCanvas);
        dragOut(selection, {100, 100}, {102, 102});
        QVERIFY(selection.isEmpty());
        QVERIFY(!selection.isDragging());
    }

    void dragThinnerThanThreePointsIsAClick()
    {
        Selection selection(kSelectionCanvas);
        dragOut(selection, {100, 100}, {400, 102});
        QVERIFY(selection.isEmpty());
    }

    void clickOnAWindowSelectsItClippedToTheScreen()
    {
        Selection selection(kSelectionCanvas);
        selection.setWindows({QRectF(700, 500, 300, 300)});
        selection.hover({750, 550});
        dragOut(selection, {750, 550}, {750, 550});
        QCOMPARE(selection.rect(), QRectF(700, 500, 100, 100));
        QVERIFY(!selection.hoveredWindow());
    }

    void clickWithoutAPriorMoveFindsTheWindow()
    {
        Selection selection(kSelectionCanvas);
        selection.setWindows({QRectF(100, 100, 200, 200)});
        dragOut(selection, {150, 150}, {150, 150});
        QCOMPARE(selection.rect(), QRectF(100, 100, 200, 200));
    }

    void theFrontmostWindowUnderThePointerIsHovered()
    {
        Selection selection(kSelectionCanvas);
        const QRectF front(100, 100, 200, 200);
        const QRectF back(50, 50, 500, 500);
        selection.setWindows({front, back});
        selection.hover({150, 150});
        QCOMPARE(selection.hoveredWindow(), std::optional(front));
        QCOMPARE(selection.hole(), front);
        selection.hover({60, 60});
        QCOMPARE(selection.hoveredWindow(), std::optional(back));
        selection.hover({700, 10});
        QVERIFY(!selection.hoveredWindow());
        QCOMPARE(selection.hole(), QRectF());
    }

    void ofTwoNeighboursTheOneHoldingThePixelIsTaken()
    {
        const QRectF left(0, 0, 100, 600);
        const QRectF right(100, 0, 700, 600);
        Selection selection(kSelectionCanvas);
        selection.setWindows({left, right});
        selection.hover({99.5, 10});
        QCOMPARE(selection.hoveredWindow(), std::optional(left));
        selection.hover({100, 10});
        QCOMPARE(selection.hoveredWindow(), std::optional(right));
        selection.hover({800, 600}); // the far corner of the canvas
        QCOMPARE(selection.hoveredWindow(), std::optional(right));
    }

    void leavingTheScreenForgetsTheHoveredWindow()
    {
        Selection selection(kSelectionCanvas);
        selection.setWindows({QRectF(0, 0, 800, 600)});
        selection.hover({10, 10});
        selection.leave();
        QVERIFY(!selection.hoveredWindow());
    }

    void handlesAreTriedFromLeftToRightAndFromTheLowerEdgeUp()
    {
        // So small that the pointer is near several handles at once.
        Selection selection = selected({100, 100, 4, 4});
        QCOMPARE(selection.handleAt({102, 102}), std::optional(Handle{-1, 1}));
        selection = selected({100, 100, 200, 4});
        QCOMPARE(selection.handleAt({200, 102}), std::optional(Handle{0, 1}));
        QCOMPARE(selection.handleAt({300, 102}), std::optional(Handle{1, 1}));
    }

    void handleReachesSevenPointsOnEachAxis()
    {
        const Selection selection = selected({100, 100, 200, 200});
        QCOMPARE(selection.handleAt({93, 93}), std::optional(Handle{-1, -1}));
        QCOMPARE(selection.handleAt({307, 207}), std::optional(Handle{1, 0}));
        QVERIFY(!selection.handleAt({92.9, 100}));
        QVERIFY(!selection.handleAt({200, 108}));
    }

    void resizingMovesOnlyTheEdgesOfItsHandle_data()
    {
        QTest::addColumn<QPointF>("handle");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("left edge")
            << QPointF(100, 200) << QPointF(50, 10) << QRectF(50, 100, 250, 200);
        QTest::newRow("top edge") << QPointF(200, 100) << QPointF(10, 80)
                                  << QRectF(100, 80, 200, 220);
        QTest::newRow("bottom right corner")
            << QPointF(300, 300) << QPointF(350, 360) << QRectF(100, 100, 250, 260);
        QTest::newRow("left edge past the right one flips")
            << QPointF(100, 200) << QPointF(400, 200) << QRectF(300, 100, 100, 200);
        QTest::newRow("bottom edge past the top one flips")
            << QPointF(200, 300) << QPointF(200, 40) << QRectF(100, 40, 200, 60);
    }
    void resizingMovesOnlyTheEdgesOfItsHandle()
    {
        QFETCH(QPointF, handle);
        QFETCH(QPointF, to);
        Selection selection = selected({100, 100, 200, 200});
        QCOMPARE(selection.press(handle, Selection::Drawn::nothing), Selection::Press::resizing);
        selection.dragTo(to);
        selection.release();
        QTEST(selection.rect(), "expected");
    }

    void movingStopsAtTheScreenEdgesAndMayTouchThem()
    {
        Selection selection = selected({100, 100, 200, 200});
        QCOMPARE(selection.press({200, 200}, Selection::Drawn::nothing), Selection::Press::inside);
        selection.startMoving({200, 200});
        selection.dragTo({0, 0});
        QCOMPARE(selection.rect(), QRectF(0, 0, 200, 200));
        selection.dragTo({799, 599});
        selection.dragTo({5000, 5000});
        selection.release();
        QCOMPARE(selection.rect(), QRectF(600, 400, 200, 200));
    }

    void pressOutsideStartsAnewWithoutMarksAndIsIgnoredWithThem()
    {
        Selection selection = selected({100, 100, 200, 200});
        QCOMPARE(selection.press({500, 500}, Selection::Drawn::something),
                 Selection::Press::ignored);
        QCOMPARE(selection.rect(), QRectF(100, 100, 200, 200));
        QVERIFY(!selection.isDragging());
        QCOMPARE(selection.press({500, 500}, Selection::Drawn::nothing),
                 Selection::Press::selecting);
        QVERIFY(selection.isEmpty());
    }

    void clearingForgetsSelectionAndDrag()
    {
        Selection selection = selected({100, 100, 200, 200});
        (void)selection.press({200, 100}, Selection::Drawn::nothing);
        selection.clear();
        QVERIFY(selection.isEmpty());
        QVERIFY(!selection.isDragging());
    }

    void selectionOnAFractionalScreenReachesItsVeryEdge()
    {
        const QSizeF canvas(1366 / 1.5, 768 / 1.5);
        Selection selection(canvas);
        dragOut(selection, {0, 0}, {2000, 2000});
        QCOMPARE(selection.rect(), QRectF(QPointF(), canvas));
    }

    void keysMoveTheSelectionAsFarAsTheCanvasGoes()
    {
        Selection selection = selected({10, 20, 100, 50});
        selection.moveBy({1, -10});
        QCOMPARE(selection.rect(), QRectF(11, 10, 100, 50));
        selection.moveBy({-100, -100});
        QCOMPARE(selection.rect(), QRectF(0, 0, 100, 50));
        selection.moveBy({10000, 10000});
        QCOMPARE(selection.rect(), QRectF(700, 550, 100, 50));
    }

    void keysMoveTheFarEdgesBetweenThreePointsAndTheCanvas()
    {
        Selection selection = selected({10, 20, 100, 50});
        selection.moveFarEdges({10, 0});
        QCOMPARE(selection.rect(), QRectF(10, 20, 110, 50));
        selection.moveFarEdges({0, -1});
        QCOMPARE(selection.rect(), QRectF(10, 20, 110, 49));
        selection.moveFarEdges({-1000, -1000});
        QCOMPARE(selection.rect(), QRectF(10, 20, 3, 3));
        selection.moveFarEdges({10000, 0});
        QCOMPARE(selection.rect(), QRectF(10, 20, 790, 3));
    }

    void keysLeaveTheSelectionOnWholePointsOfAFractionalScreen()
    {
        const QSizeF canvas(1366 / 1.5, 768 / 1.5); // 910.67 × 512
        Selection selection(canvas);
        dragOut(selection, {100, 100}, {350, 200});
        selection.moveBy({1000, 0});
        QCOMPARE(selection.rect(), QRectF(660, 100, 250, 100));
        selection.moveBy({-1, 0});
        QCOMPARE(selection.rect(), QRectF(659, 100, 250, 100));
        selection.moveFarEdges({1000, 0});
        QCOMPARE(selection.rect().right(), canvas.width());
        selection.moveFarEdges({-10, 0});
        QCOMPARE(selection.rect(), QRectF(659, 100, 242, 100));
    }

    void keysMoveNothingWhileNothingIsSelected()
    {
        Selection selection(kSelectionCanvas);
        selection.moveBy({1, 1});
        selection.moveFarEdges({50, 50});
        QVERIFY(selection.isEmpty());
    }

    void dragsOfMarksLeaveTheSelectionAlone()
    {
        Selection selection = selected({10, 20, 100, 50});
        for (const bool drawing : {true, false}) {
            if (drawing)
                selection.startDrawing();
            else
                selection.startMovingAnnotation({30, 30});
            QVERIFY(selection.isDragging());
            QVERIFY(!selection.isChanging());
            selection.dragTo({400, 400});
            selection.release();
            QCOMPARE(selection.rect(), QRectF(10, 20, 100, 50));
            QVERIFY(!selection.isDragging());
        }
    }

    void theStepBackOfAMovedMarkIsWantedOnceAndOnlyWhenItMoves()
    {
        Selection selection = selected({10, 20, 100, 50});
        selection.startMovingAnnotation({30, 30});
        QVERIFY(!selection.moveAnnotationTo({30, 30}));
        const auto first = selection.moveAnnotationTo({35, 28});
        QVERIFY(first && first->first);
        QCOMPARE(first->by, QPointF(5, -2));
        const auto second = selection.moveAnnotationTo({900, 28});
        QVERIFY(second && !second->first);
        QCOMPARE(second->by, QPointF(765, 0)); // as far as the canvas
    }
};

BRINDLECAM_TEST(TestSelection);

} // namespace brindlecam

#include "tst_selection.moc"
