#include "canvas/AnnotationEditor.h"
#include "canvas/CanvasCursor.h"
#include "canvas/Selection.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr QSizeF kCursorCanvas(800, 600);

Selection cursorSelection()
{
    Selection selection(kCursorCanvas);
    (void)selection.press({100, 100}, Selection::Drawn::nothing);
    selection.dragTo({300, 300});
    selection.release();
    return selection;
}

/// An editor with one line across the middle of the selection.
AnnotationEditor editorWithLine()
{
    AnnotationEditor editor(QImage(800, 600, QImage::Format_RGB32), kCursorCanvas);
    editor.beginAnnotation(Tool::line, {150, 200}, {});
    editor.drawTo({250, 200}, {100, 100, 200, 200}, AnnotationEditor::Constraint::none);
    editor.endDrawing();
    return editor;
}

} // namespace

class TestCanvasCursor final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pointerModeTellsWhatAPressWouldDo_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<Qt::CursorShape>("expected");
        QTest::newRow("outside") << QPointF(500, 500) << Qt::CrossCursor;
        QTest::newRow("inside") << QPointF(200, 150) << Qt::OpenHandCursor;
        QTest::newRow("on a mark") << QPointF(200, 202) << Qt::PointingHandCursor;
        QTest::newRow("left edge") << QPointF(100, 200) << Qt::SizeHorCursor;
        QTest::newRow("top edge") << QPointF(200, 100) << Qt::SizeVerCursor;
        QTest::newRow("corner") << QPointF(300, 300) << Qt::CrossCursor;
    }
    void pointerModeTellsWhatAPressWouldDo()
    {
        QFETCH(QPointF, point);
        QTEST(cursorAt(cursorSelection(), editorWithLine(), point), "expected");
    }

    void textToolShowsTheTextCursorInsideTheSelectionOnly()
    {
        AnnotationEditor editor = editorWithLine();
        editor.chooseTool(Tool::text);
        QCOMPARE(cursorAt(cursorSelection(), editor, {200, 200}), Qt::IBeamCursor);
        QCOMPARE(cursorAt(cursorSelection(), editor, {500, 500}), Qt::CrossCursor);
    }

    void otherToolsShowTheCrosshairEvenOverMarks()
    {
        AnnotationEditor editor = editorWithLine();
        editor.chooseTool(Tool::pen);
        QCOMPARE(cursorAt(cursorSelection(), editor, {200, 200}), Qt::CrossCursor);
    }

    void crosshairWhileNothingIsSelected()
    {
        QCOMPARE(cursorAt(Selection(kCursorCanvas), editorWithLine(), {200, 200}), Qt::CrossCursor);
    }
};

BRINDLECAM_TEST(TestCanvasCursor);

} // namespace brindlecam

#include "tst_canvascursor.moc"
