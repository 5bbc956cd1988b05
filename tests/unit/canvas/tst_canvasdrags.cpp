#include "EditingFixture.h"
#include "canvas/HudView.h"
#include "support/TestCase.h"

#include <QMouseEvent>

#include <cmath>

namespace brindlecam {

/// What a press, a move and a release do to each other, and what is left to do while nothing is
/// selected.
class TestCanvasDrags final : public test::TestCase {
    Q_OBJECT

private:
    using Editor = test::EditingFixture;

    static void moveHolding(const Editor& e, QPoint to, Qt::KeyboardModifiers modifiers)
    {
        QMouseEvent event(QEvent::MouseMove, to, e.canvas->mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(e.canvas.get(), &event);
    }

    /// A line that is undone, and a click beside the selection.
    static void deselectWithAStepForth(Editor& e)
    {
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.canvas->undo();
        e.click({350, 30});
    }

private Q_SLOTS:
    void shiftLetGoJustBeforeTheButtonKeepsTheSnappedLine_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::newRow("line") << Tool::line;
        QTest::newRow("arrow") << Tool::arrow;
    }
    void shiftLetGoJustBeforeTheButtonKeepsTheSnappedLine()
    {
        QFETCH(Tool, tool);
        Editor e;
        e.choose(tool);
        e.press({50, 60});
        moveHolding(e, {150, 80}, Qt::ShiftModifier);
        e.release({150, 80});
        QCOMPARE(e.mark(0).points().last(), QPointF(50 + std::hypot(100, 20), 60));
    }

    void strokeHasNoPointOfItsOwnForTheRelease()
    {
        Editor e;
        e.draw(Tool::pen, {50, 60}, {150, 80});
        QCOMPARE(e.mark(0).points(), (QPolygonF{{50, 60}, {100, 70}, {150, 80}}));
    }

    // A move may be swallowed where the program is late and others follow it.
    void releaseElsewhereThanTheLastMoveEndsTheDragThere()
    {
        Editor e;
        e.choose(Tool::line);
        e.press({50, 60});
        e.move({100, 60});
        e.release({150, 90});
        QCOMPARE(e.mark(0).points().last(), QPointF(150, 90));
    }

    void deselectingClickHighlightsTheWindowBelowAtOnce()
    {
        test::CanvasFixture f;
        const QRectF window(100, 100, 200, 150);
        f.canvas->setWindowRects({window});
        f.drag({10, 10}, {60, 60});
        f.click({200, 150});
        QVERIFY(f.canvas->selection().isEmpty());
        QCOMPARE(f.canvas->selection().hoveredWindow(), std::optional(window));
        QCOMPARE(f.canvas->selection().hole(), window);
        f.click({200, 150});
        QCOMPARE(f.canvas->selection().rect(), window);
    }

    void resizeStopsAtThreePointsWithMarks_data()
    {
        QTest::addColumn<QPoint>("handle");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QRectF>("expected");
        // Selected are the points from 10, 10 to 260, 280.
        QTest::newRow("left") << QPoint(10, 145) << QPoint(390, 145) << QRectF(257, 10, 3, 270);
        QTest::newRow("right") << QPoint(260, 145) << QPoint(12, 145) << QRectF(10, 10, 3, 270);
        QTest::newRow("top") << QPoint(135, 10) << QPoint(135, 299) << QRectF(10, 277, 250, 3);
        QTest::newRow("bottom") << QPoint(135, 280) << QPoint(135, 0) << QRectF(10, 10, 250, 3);
        QTest::newRow("corner") << QPoint(260, 280) << QPoint(1, 1) << QRectF(10, 10, 3, 3);
        QTest::newRow("not so far")
            << QPoint(260, 145) << QPoint(50, 145) << QRectF(10, 10, 40, 270);
    }
    void resizeStopsAtThreePointsWithMarks()
    {
        QFETCH(QPoint, handle);
        QFETCH(QPoint, to);
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.drag(handle, to);
        QTEST(e.canvas->selection().rect(), "expected");
        QCOMPARE(e.marks().size(), 1U);
    }

    void stepsAndWheelWorkWhileNothingIsSelected()
    {
        Editor e;
        int handedOn = 0;
        e.canvas->onCommandElsewhere = [&](const CanvasCommand&) { ++handedOn; };
        deselectWithAStepForth(e);
        QVERIFY(e.canvas->selection().isEmpty());
        e.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(e.marks().size(), 1U);
        e.turnWheel(2 * 120);
        QCOMPARE(e.prefs.size(Tool::line), 5.0);
        e.key(Qt::Key_Delete);
        QCOMPARE(e.marks().size(), 1U); // none of them was chosen
        e.key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(e.marks().empty());
        QCOMPARE(handedOn, 0);
        e.key(Qt::Key_Return); // there is no picture to end with
        QVERIFY(e.outcomes.empty());
    }

    void wheelSaysWhatItDoesWhileNothingIsSelected()
    {
        Editor e;
        deselectWithAStepForth(e);
        e.canvas->redo();
        e.turnWheel(120);
        const auto* message = e.canvas->findChild<HudView*>();
        QVERIFY(message->isVisibleTo(e.canvas.get()));
        QVERIFY(message->geometry().contains(e.canvas->rect().center()));
    }

    void marksAreThereAgainInTheNextSelection()
    {
        Editor e;
        deselectWithAStepForth(e);
        e.canvas->redo();
        e.drag({300, 200}, {20, 20});
        QCOMPARE(e.canvas->selection().rect(), QRectF(20, 20, 280, 180));
        QCOMPARE(e.marks().size(), 1U);
    }

    void clickOnAToolReachesItWhereTheTextFieldLies()
    {
        Editor e;
        e.beginText({250, 60});
        QTest::keyClicks(e.field(), QStringLiteral("Hola"));
        const BarButton* line = e.button(tooltip(Tool::line));
        const QPoint at = line->mapTo(e.canvas.get(), line->rect().center());
        QVERIFY(e.field()->geometry().intersects(line->parentWidget()->geometry()));
        for (const BarButton* button : e.canvas->findChildren<BarButton*>()) {
            const QPoint centre = button->mapTo(e.canvas.get(), button->rect().center());
            if (button->isVisibleTo(e.canvas.get()) && e.field()->geometry().contains(centre))
                QCOMPARE(e.canvas->childAt(centre), button);
        }
        QCOMPARE(e.canvas->childAt(at), line);
    }
};

BRINDLECAM_TEST(TestCanvasDrags);

} // namespace brindlecam

#include "tst_canvasdrags.moc"
