#include "canvas/AnnotationEditor.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <cmath>

namespace brindlecam {

namespace {

constexpr QSize kEditorPixels(200, 150);
constexpr QRectF kEditorSelection(20, 20, 160, 110);
using Constraint = AnnotationEditor::Constraint;

/// A picture in which no two rows and no two columns are equal.
QImage editorPicture()
{
    QImage image(kEditorPixels, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x, y, (x * 7 + y * 13) % 256));
    }
    return image;
}

} // namespace

/// An editor, driven as the canvas drives it. Not file-local: lambdas that capture it would not
/// build as unity.
struct EditorInHand {
    AnnotationEditor editor{editorPicture(), kEditorPixels};

    void draw(Tool tool, QPointF from, QPointF to, Constraint constraint = Constraint::none)
    {
        editor.beginAnnotation(tool, from, {});
        editor.drawTo(to, kEditorSelection, constraint);
        editor.endDrawing();
    }
    [[nodiscard]] const Annotation& mark(std::size_t index) const
    {
        return *editor.annotations().at(index);
    }
};

/// How marks begin, grow, end, move and go, each with its step back.
class TestAnnotationEditor final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void marksBeginWithTheChosenColourAndStroke()
    {
        EditorInHand e;
        e.editor.setColor(Config::palette.at(3));
        e.editor.beginAnnotation(Tool::marker, {30, 40}, {.lineWidth = 18, .opacity = 0.7});
        const Annotation& mark = *e.editor.current();
        QCOMPARE(mark.color(), Config::palette.at(3));
        QCOMPARE(mark.lineWidth(), 18.0);
        QCOMPARE(mark.opacity(), 0.7);
        QVERIFY(e.editor.annotations().empty());
    }

    void penAndMarkerCollectPointsAndTheOthersMoveTheirEnd_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QPolygonF>("points");
        const QPolygonF all{{30, 40}, {50, 60}, {70, 50}};
        const QPolygonF ends{{30, 40}, {70, 50}};
        QTest::newRow("pen") << Tool::pen << all;
        QTest::newRow("marker") << Tool::marker << all;
        QTest::newRow("line") << Tool::line << ends;
        QTest::newRow("arrow") << Tool::arrow << ends;
        QTest::newRow("rect") << Tool::rect << ends;
        QTest::newRow("pixelate") << Tool::pixelate << ends;
        QTest::newRow("number follows the mouse") << Tool::number << QPolygonF{{70, 50}};
    }
    void penAndMarkerCollectPointsAndTheOthersMoveTheirEnd()
    {
        QFETCH(Tool, tool);
        EditorInHand e;
        e.editor.beginAnnotation(tool, {30, 40}, {});
        e.editor.drawTo({50, 60}, kEditorSelection, Constraint::none);
        e.editor.drawTo({70, 50}, kEditorSelection, Constraint::none);
        e.editor.endDrawing();
        QCOMPARE(e.editor.annotations().size(), 1U);
        QTEST(e.mark(0).points(), "points");
        QVERIFY(!e.editor.current());
    }

    void aMarkDrawnOutsideTheSelectionIsClampedToIt()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {500, -10});
        QCOMPARE(e.mark(0).points().last(), QPointF(180, 20));
    }

    void shiftHoldsLinesAndArrowsOnEighthTurns_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<qreal>("degrees");
        QTest::addColumn<qreal>("expected");
        QTest::newRow("30 becomes 45") << Tool::line << 30.0 << 45.0;
        QTest::newRow("20 becomes 0") << Tool::line << 20.0 << 0.0;
        QTest::newRow("22.5 goes away from zero") << Tool::line << 22.5 << 45.0;
        QTest::newRow("-22.5 goes away from zero") << Tool::line << -22.5 << -45.0;
        QTest::newRow("arrow") << Tool::arrow << 100.0 << 90.0;
        QTest::newRow("a rectangle is not held") << Tool::rect << 30.0 << 30.0;
    }
    void shiftHoldsLinesAndArrowsOnEighthTurns()
    {
        QFETCH(Tool, tool);
        QFETCH(qreal, degrees);
        QFETCH(qreal, expected);
        constexpr qreal kLength = 40;
        const QPointF start(90, 75);
        const auto at = [&](qreal angle) {
            const qreal radians = angle * M_PI / 180;
            return start + kLength * QPointF(std::cos(radians), std::sin(radians));
        };
        EditorInHand e;
        e.draw(tool, start, at(degrees), Constraint::eighthTurns);
        const QPointF off = e.mark(0).points().last() - at(expected);
        QVERIFY2(std::hypot(off.x(), off.y()) < 1e-6, "end of the mark");
    }

    void aHeldEndStaysInsideTheSelection()
    {
        EditorInHand e;
        e.draw(Tool::line, {170, 30}, {180, 128}, Constraint::eighthTurns);
        QCOMPARE(e.mark(0).points().last().y(), 30 + std::hypot(10.0, 98.0));
        e.draw(Tool::line, {170, 60}, {180, 71}, Constraint::eighthTurns);
        QCOMPARE(e.mark(1).points().last().x(), 180.0); // 45 degrees would end at 180.5
    }

    void aLineShorterThanThreePointsLeavesNothingAndNoStep()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {32, 41});
        QVERIFY(e.editor.annotations().empty());
        QVERIFY(!e.editor.undo());
    }

    void aDotOfThePenIsKept()
    {
        EditorInHand e;
        e.editor.beginAnnotation(Tool::pen, {30, 40}, {});
        e.editor.endDrawing();
        QCOMPARE(e.editor.annotations().size(), 1U);
    }

    void whatADrawingStepMakesStaleHoldsWhatItTouched()
    {
        EditorInHand e;
        e.editor.beginAnnotation(Tool::arrow, {30, 40}, {});
        e.editor.drawTo({40, 90}, kEditorSelection, Constraint::none);
        const std::vector<QRectF> before = e.editor.current()->paintedParts();
        const std::vector<QRectF> stale =
            e.editor.drawTo({90, 90}, kEditorSelection, Constraint::none);
        const std::vector<QRectF> after = e.editor.current()->paintedParts();
        const auto isStale = [&stale](const QRectF& part) {
            return std::ranges::find(stale, part) != stale.end();
        };
        QVERIFY(std::ranges::all_of(before, isStale));
        QVERIFY(std::ranges::all_of(after, isStale));
        QVERIFY(before != after);
        QCOMPARE(e.editor.endDrawing(), after);
    }

    void aNewPieceOfAStrokeMakesOnlyItselfStale()
    {
        EditorInHand e;
        e.editor.beginAnnotation(Tool::pen, {30, 40}, {.lineWidth = 4});
        e.editor.drawTo({100, 100}, kEditorSelection, Constraint::none);
        const std::vector<QRectF> stale =
            e.editor.drawTo({104, 102}, kEditorSelection, Constraint::none);
        QCOMPARE(stale.size(), 1U);
        QVERIFY(stale.front().contains(QRectF(98, 98, 8, 6)));
        QVERIFY(stale.front().width() < 20 && stale.front().height() < 20);
    }

    void badgesCountPerColour()
    {
        EditorInHand e;
        const auto badge = [&e](const QColor& color) {
            e.editor.setColor(color);
            e.draw(Tool::number, {50, 50}, {50, 50});
            return e.editor.annotations().back()->number();
        };
        const QColor red = Config::palette.at(0);
        QCOMPARE(badge(red), 1);
        QCOMPARE(badge(red), 2);
        QCOMPARE(badge(Config::palette.at(3)), 1);
        QVERIFY(e.editor.selectAt({50, 50})); // the blue one, on top
        QVERIFY(e.editor.deleteSelected());
        QVERIFY(e.editor.selectAt({50, 50})); // the red 2
        QVERIFY(e.editor.deleteSelected());
        QCOMPARE(badge(red), 2);
    }

    void aPixelatingMarkIsPixelatedWhileDrawnAndAnewWhenMoved()
    {
        EditorInHand e;
        e.editor.beginAnnotation(Tool::pixelate, {30, 40}, {});
        e.editor.drawTo({66, 76}, kEditorSelection, Constraint::none);
        QVERIFY(e.editor.current()->pixelated().has_value());
        e.editor.endDrawing();
        const QImage before = e.mark(0).pixelated()->cells();
        QVERIFY(e.editor.selectAt({40, 50}));
        e.editor.moveSelected({50, 20}, AnnotationEditor::Step::wanted);
        const QImage after = e.mark(0).pixelated()->cells();
        QCOMPARE(after.size(), before.size());
        QVERIFY(after != before);
    }

    void aMoveTakesOneStepHoweverLong()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        QVERIFY(e.editor.selectAt({50, 41}));
        e.editor.moveSelected({1, 0}, AnnotationEditor::Step::wanted);
        for (int i = 0; i < 20; ++i)
            e.editor.moveSelected({1, 1}, AnnotationEditor::Step::noted);
        QCOMPARE(e.mark(0).points().first(), QPointF(51, 60));
        QVERIFY(e.editor.undo());
        QCOMPARE(e.mark(0).points().first(), QPointF(30, 40));
        QVERIFY(e.editor.undo()); // the line itself
        QVERIFY(!e.editor.undo());
    }

    void aRunOfKeysIsOneStepAndEndsWithWhateverElseIsDone()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        QVERIFY(e.editor.selectAt({50, 41}));
        for (int i = 0; i < 5; ++i)
            e.editor.nudgeSelected({1, 0});
        QVERIFY(e.editor.selectAt({50, 41}));
        e.editor.nudgeSelected({0, 10});
        e.editor.nudgeSelected({0, 10});
        QCOMPARE(e.mark(0).points().first(), QPointF(35, 60));
        QVERIFY(e.editor.undo());
        QCOMPARE(e.mark(0).points().first(), QPointF(35, 40));
        QVERIFY(e.editor.undo());
        QCOMPARE(e.mark(0).points().first(), QPointF(30, 40));
    }

    void undoAndRedoDropTheSelectedMark()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        e.draw(Tool::line, {30, 60}, {80, 60});
        QVERIFY(e.editor.selectAt({50, 41}));
        QVERIFY(e.editor.undo());
        QVERIFY(!e.editor.selectedAnnotation());
        QVERIFY(e.editor.selectAt({50, 41}));
        QVERIFY(e.editor.redo());
        QVERIFY(!e.editor.selectedAnnotation());
        QCOMPARE(e.editor.annotations().size(), 2U);
    }

    void aNewMarkEmptiesWhatCouldBeRedone()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        e.draw(Tool::line, {30, 60}, {80, 60});
        QVERIFY(e.editor.undo());
        QVERIFY(e.editor.undo());
        e.draw(Tool::line, {30, 80}, {80, 80});
        QVERIFY(!e.editor.redo());
        QCOMPARE(e.editor.annotations().size(), 1U);
    }

    void choosingAToolDropsTheSelectedMark()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        QVERIFY(e.editor.selectAt({50, 41}));
        e.editor.chooseTool(Tool::pen);
        QVERIFY(!e.editor.selectedAnnotation());
    }

    void pickingAColourLeavesTheMarksAsTheyAre()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        QVERIFY(e.editor.selectAt({50, 41}));
        e.editor.setColor(Config::palette.at(2));
        QCOMPARE(e.mark(0).color(), Config::palette.front());
    }

    void textIsAMarkOnlyWhenThereIsAny()
    {
        EditorInHand e;
        e.editor.addText(QString(), Qt::red, {30, 40, 100, 24});
        QVERIFY(e.editor.annotations().empty());
        QVERIFY(!e.editor.undo());
        e.editor.addText(QStringLiteral("hola"), Qt::red, {30, 40, 100, 24});
        QCOMPARE(e.mark(0).points(), QPolygonF({QPointF(30, 40)}));
        QCOMPARE(e.mark(0).textHeight(), 24.0);
    }

    void nothingSelectedMovesAndDeletesNothing()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        e.editor.moveSelected({5, 5}, AnnotationEditor::Step::wanted);
        e.editor.nudgeSelected({5, 5});
        QVERIFY(!e.editor.deleteSelected());
        QCOMPARE(e.mark(0).points().first(), QPointF(30, 40));
        QVERIFY(e.editor.undo());
        QVERIFY(!e.editor.undo());
    }

    void clearLeavesNoMarkAndNoStep()
    {
        EditorInHand e;
        e.draw(Tool::line, {30, 40}, {80, 40});
        e.editor.clear();
        QVERIFY(e.editor.annotations().empty());
        QVERIFY(!e.editor.undo());
        QVERIFY(!e.editor.redo());
    }
};

BRINDLECAM_TEST(TestAnnotationEditor);

} // namespace brindlecam

#include "tst_annotationeditor.moc"
