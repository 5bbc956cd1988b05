// Covers ToolControl.
#include "EditingFixture.h"
#include "canvas/MarkedPicture.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

namespace brindlecam {

/// Drawing, picking, typing and stepping back on a canvas, by events.
class TestCanvasEditing final : public test::TestCase {
    Q_OBJECT

private:
    using Editor = test::EditingFixture;

private Q_SLOTS:
    void aDrawnMarkIsInThePictureAndCopiedByItself()
    {
        Editor e;
        e.draw(Tool::rect, {50, 60}, {150, 140});
        QCOMPARE(e.marks().size(), 1U);
        QCOMPARE(e.autoCopied.size(), 1U);
        const QImage expected =
            flattened(e.image, QSizeF(e.kPixels), QRect(10, 10, 250, 270), e.marks());
        QCOMPARE(e.autoCopied.back().image(), expected);
        QVERIFY(expected != e.image.copy(10, 10, 250, 270));
    }

    void theBarsStandAgainWhenAMarkIsDrawnAndHideWhileTheSelectionMoves()
    {
        Editor e;
        const BarButton* close = e.button(QStringLiteral("Cerrar (Esc)"));
        QVERIFY(close->isVisibleTo(e.canvas.get()));
        e.press({100, 100});
        e.move({110, 105});
        QVERIFY(!close->isVisibleTo(e.canvas.get()));
        e.release({110, 105});
        QVERIFY(close->isVisibleTo(e.canvas.get()));
        e.draw(Tool::line, {60, 60}, {120, 60});
        QVERIFY(close->isVisibleTo(e.canvas.get()));
    }

    void aNegligibleMarkLeavesNothing()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {51, 61});
        QVERIFY(e.marks().empty());
        e.canvas->undo();
        QVERIFY(e.marks().empty());
    }

    void marksAreShownOnlyInsideTheSelection()
    {
        Editor e;
        e.defaults.setBoolean(QStringLiteral("showLoupe"), false);
        e.draw(Tool::rect, {50, 60}, {150, 140});
        e.clickButton(Editor::pointerName());
        e.drag({50, 100}, {20, 100}); // the mark, 30 points to the left
        e.key(Qt::Key_Left, Qt::ShiftModifier);
        e.key(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(e.mark(0).rect(), QRectF(0, 60, 100, 80));
        const QImage shown = e.canvas->grab().toImage();
        QCOMPARE(shown.pixel(50, 60), Config::palette.front().rgb()); // its upper edge
        QCOMPARE(shown.pixel(4, 60), Dimming::dimmedCopy(e.image).pixel(4, 60));
    }

    void aPressOutsideWithMarksChangesNothing()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        const QRectF before = e.canvas->selection().rect();
        e.clickButton(Editor::pointerName());
        e.drag({350, 30}, {390, 280});
        QCOMPARE(e.canvas->selection().rect(), before);
        QCOMPARE(e.marks().size(), 1U);
    }

    void movingAMarkIsOneStepAndOneCopy()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.clickButton(Editor::pointerName());
        e.autoCopied.clear();
        e.drag({100, 60}, {110, 90});
        QCOMPARE(e.mark(0).points().first(), QPointF(60, 90));
        QCOMPARE(e.autoCopied.size(), 1U);
        e.canvas->undo();
        QCOMPARE(e.mark(0).points().first(), QPointF(50, 60));
    }

    void aPressWithoutMovementTakesNoStepAndCopiesNothing()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.clickButton(Editor::pointerName());
        e.autoCopied.clear();
        e.click({100, 60});
        QVERIFY(e.canvas->editor().selectedAnnotation());
        QVERIFY(e.autoCopied.empty());
        e.canvas->undo(); // the line: there is no step of the press
        QVERIFY(e.marks().empty());
    }

    void everyChangeOfTheMarksIsCopied()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        QCOMPARE(e.autoCopied.size(), 1U);
        e.canvas->undo();
        QCOMPARE(e.autoCopied.size(), 2U);
        e.canvas->undo(); // nothing to undo
        QCOMPARE(e.autoCopied.size(), 2U);
        e.canvas->redo();
        QCOMPARE(e.autoCopied.size(), 3U);
        e.clickButton(Editor::pointerName());
        e.click({100, 60});
        e.key(Qt::Key_Delete);
        QVERIFY(e.marks().empty());
        QCOMPARE(e.autoCopied.size(), 4U);
        e.key(Qt::Key_Backspace); // nothing is selected any more
        QCOMPARE(e.autoCopied.size(), 4U);
        e.type(QStringLiteral("a"));
        QCOMPARE(e.autoCopied.size(), 4U);
        QTest::keyClick(e.field(), Qt::Key_Return);
        QCOMPARE(e.autoCopied.size(), 5U);
    }

    void deleteWithTheCommandKeyDeletesNothing()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.clickButton(Editor::pointerName());
        e.click({100, 60});
        e.key(Qt::Key_Backspace, Qt::ControlModifier);
        QCOMPARE(e.marks().size(), 1U);
    }

    void undoAndRedoKeysWork()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(e.marks().empty());
        e.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(e.marks().size(), 1U);
    }

    void theSelectedMarkIsOutlinedInPointerModeOnly()
    {
        Editor e;
        e.draw(Tool::rect, {50, 60}, {150, 140});
        e.clickButton(Editor::pointerName());
        const QRect around(44, 54, 112, 92); // the mark with its outline
        const QImage before = e.canvas->grab(around).toImage();
        e.click({50, 100});
        QVERIFY(e.canvas->grab(around).toImage() != before);
        e.choose(Tool::pixelate);
        QCOMPARE(e.canvas->grab(around).toImage(), before);
        e.clickButton(Editor::pointerName());
        QCOMPARE(e.canvas->grab(around).toImage(), before);
    }

    void aToolsButtonChoosesItShowsItsSizesAndGoesBackToPointerMode()
    {
        Editor e;
        const QString less = QStringLiteral("Más fino / pequeño");
        const auto popupShown = [&] {
            const auto buttons = e.canvas->findChildren<BarButton*>();
            return std::ranges::any_of(buttons, [&](const BarButton* button) {
                return button->accessibleName() == less && button->isVisibleTo(e.canvas.get());
            });
        };
        e.choose(Tool::pen);
        QCOMPARE(e.canvas->editor().tool(), std::optional(Tool::pen));
        QVERIFY(popupShown());
        e.click(QPoint(100, 100)); // closes the popup, and draws a dot
        QVERIFY(!popupShown());
        e.choose(Tool::pen); // shows the popup again
        QCOMPARE(e.canvas->editor().tool(), std::optional(Tool::pen));
        QVERIFY(popupShown());
        e.choose(Tool::pen);
        QVERIFY(!e.canvas->editor().tool());
        QVERIFY(!popupShown());
        e.choose(Tool::text); // has no sizes: the second press leaves it
        e.choose(Tool::text);
        QVERIFY(!e.canvas->editor().tool());
    }

    void aPickedColourIsThatOfTheMarksToCome()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.clickButton(QStringLiteral("Color"));
        e.clickButton(QStringLiteral("Azul"));
        QVERIFY(!e.button(QStringLiteral("Azul"))->isVisibleTo(e.canvas.get()));
        e.draw(Tool::line, {50, 80}, {150, 80});
        QCOMPARE(e.mark(0).color(), Config::palette.at(0));
        QCOMPARE(e.mark(1).color(), Config::palette.at(3));
    }

    void anotherScreensSelectionDropsMarksTextAndSteps()
    {
        Editor e;
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.type(QStringLiteral("Hola"));
        e.canvas->clearSelection();
        QVERIFY(e.marks().empty());
        QVERIFY(!e.field());
        e.canvas->undo();
        QVERIFY(e.marks().empty());
        QVERIFY(!e.button(QStringLiteral("Cerrar (Esc)"))->isVisibleTo(e.canvas.get()));
    }

    void arrowsMoveTheSelectionItsEdgesOrTheSelectedMark()
    {
        Editor e;
        e.key(Qt::Key_Right);
        e.key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(e.canvas->selection().rect(), QRectF(11, 20, 250, 270));
        e.key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        e.key(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(e.canvas->selection().rect(), QRectF(11, 20, 240, 269));
        QCOMPARE(e.autoCopied.back().image(), e.image.copy(11, 20, 240, 269));
        e.draw(Tool::line, {50, 60}, {150, 60});
        e.clickButton(Editor::pointerName());
        e.click({100, 60});
        e.key(Qt::Key_Down);
        e.key(Qt::Key_Down);
        QCOMPARE(e.mark(0).points().first(), QPointF(50, 62));
        QCOMPARE(e.canvas->selection().rect(), QRectF(11, 20, 240, 269));
        e.canvas->undo();
        QCOMPARE(e.mark(0).points().first(), QPointF(50, 60));
    }

    void picturesMadeOneUponTheOtherEqualOneMadeAtOnce()
    {
        Editor e;
        const auto atOnce = [&e] {
            return flattened(e.image, QSizeF(e.kPixels), QRect(10, 10, 250, 270), e.marks());
        };
        e.choose(Tool::marker);
        for (int i = 0; i < 4; ++i) {
            e.drag({50, 60 + 10 * i}, {150, 90 + 5 * i}); // over each other, half transparent
            QCOMPARE(e.canvas->actions().render()->image(), atOnce());
        }
        e.canvas->undo();
        QCOMPARE(e.canvas->actions().render()->image(), atOnce());
        e.drag({60, 80}, {150, 160});
        QCOMPARE(e.canvas->actions().render()->image(), atOnce());
        e.key(Qt::Key_Right);
        QCOMPARE(e.canvas->actions().render()->image(),
                 flattened(e.image, QSizeF(e.kPixels), QRect(11, 10, 250, 270), e.marks()));
    }

    void pinScrollAndGifTellTheirPlaceInNativePixels()
    {
        Editor e(QSizeF(200, 150)); // two pixels per point
        const QRect native = QRect(20, 20, 300, 240).translated(e.kNativeOrigin);
        e.canvas->actions().pin();
        QCOMPARE(std::get<outcome::Pin>(e.outcomes.at(0)).frame, native);
        QCOMPARE(std::get<outcome::Pin>(e.outcomes.at(0)).picture.pointSize(), QSizeF(150, 120));
        e.canvas->actions().scrollCapture();
        QCOMPARE(std::get<outcome::Scroll>(e.outcomes.at(1)).rect, native);
        e.canvas->actions().recordGif();
        QCOMPARE(std::get<outcome::Gif>(e.outcomes.at(2)).rect, native);
    }

    void tooSmallASelectionForALongCaptureGetsAMessageInstead()
    {
        test::CanvasFixture f;
        f.drag({10, 10}, {89, 200}); // one point too narrow to scroll
        const QImage before = f.canvas->grab().toImage();
        f.canvas->actions().scrollCapture();
        QVERIFY(f.outcomes.empty());
        QVERIFY(f.canvas->grab().toImage() != before);
        f.canvas->actions().recordGif(); // wide and high enough
        QCOMPARE(f.outcomes.size(), 1U);
        f.canvas->clearSelection();
        f.drag({10, 10}, {49, 200});
        f.canvas->actions().recordGif();
        QCOMPARE(f.outcomes.size(), 1U);
    }

    void aStrokeUnderTheHandIsInWhatTheKeysCopy()
    {
        Editor e;
        e.choose(Tool::line);
        e.press({50, 60});
        e.move({150, 60});
        e.key(Qt::Key_Return);
        QCOMPARE(e.outcomes.size(), 1U);
        QCOMPARE(e.marks().size(), 1U);
        e.release({160, 60}); // too late to change anything
        QCOMPARE(e.marks().size(), 1U);
        QCOMPARE(e.mark(0).points().last(), QPointF(150, 60));
    }

    void movingTheSelectionByKeysLeavesAnOpenPopupOnTop()
    {
        Editor e;
        e.clickButton(QStringLiteral("Color"));
        const QWidget* palette = e.button(QStringLiteral("Azul"))->parentWidget();
        const auto* actions = e.button(QStringLiteral("Guardar (⌘S)"))->parentWidget();
        e.key(Qt::Key_Right);
        const QObjectList all = e.canvas->children();
        QVERIFY(all.indexOf(palette) > all.indexOf(actions));
        QVERIFY(palette->isVisibleTo(e.canvas.get()));
    }

    void unavailableActionsAreDisabled()
    {
        test::CanvasFixture f;
        f.canvas->setUnavailable({Toolbar::Action::pin, Toolbar::Action::gif});
        f.drag({10, 10}, {200, 200});
        QVERIFY(!f.button(QStringLiteral("Fijar flotando en pantalla"))->isEnabled());
        QVERIFY(f.button(QStringLiteral("Copiar (⌘C o Enter)"))->isEnabled());
    }

    void keysThatFindNoSelectionHereAreHandedOn()
    {
        test::CanvasFixture f;
        std::vector<CanvasCommand::Kind> asked;
        f.canvas->onCommandElsewhere = [&](const CanvasCommand& command) {
            asked.push_back(command.kind);
        };
        f.key(Qt::Key_Return);
        f.key(Qt::Key_Z, Qt::ControlModifier);
        f.key(Qt::Key_Left);
        QCOMPARE(asked, (std::vector{CanvasCommand::Kind::copy, CanvasCommand::Kind::undo,
                                     CanvasCommand::Kind::move}));
    }

    void storedNonsenseIsClampedWhenAMarkBegins()
    {
        Editor e;
        e.defaults.setNumber(QStringLiteral("size.pen"), 5000);
        e.defaults.setString(QStringLiteral("markerOpacity"), QStringLiteral("much"));
        e.draw(Tool::pen, {50, 60}, {150, 60});
        QCOMPARE(e.mark(0).lineWidth(), 20.0);
        QCOMPARE(e.mark(0).opacity(), 0.4);
    }

    void everyScaleRendersAllItsPixels_data()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0})
            QTest::addRow("%g", scale) << scale;
    }
    void everyScaleRendersAllItsPixels()
    {
        QFETCH(qreal, scale);
        const QSizeF size = QSizeF(test::CanvasFixture::kPixels) / scale;
        Editor e(size);
        e.draw(Tool::arrow, {30, 40}, {90, 70});
        const QRectF rect = e.canvas->selection().rect();
        const QRect pixels = pixelRect(rect, size, e.image.size());
        QCOMPARE(e.canvas->actions().render()->image(),
                 flattened(e.image, size, pixels, e.marks()));
        QCOMPARE(e.canvas->actions().render()->pointSize(), rect.size());
    }
};

BRINDLECAM_TEST(TestCanvasEditing);

} // namespace brindlecam

#include "tst_canvasediting.moc"
