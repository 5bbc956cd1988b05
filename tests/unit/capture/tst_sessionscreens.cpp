// Covers OverlaySet, OverlayWindow.
#include "CaptureFixture.h"
#include "canvas/BarButton.h"
#include "canvas/TextField.h"
#include "support/TestCase.h"

namespace brindlecam {

/// A session on two screens: marks on one of them are not lost by a press on the other.
class TestSessionScreens final : public test::TestCase {
    Q_OBJECT

private:
    using Fixture = test::CaptureFixture;

    static void choose(CanvasView& canvas, Tool tool)
    {
        for (BarButton* button : canvas.findChildren<BarButton*>()) {
            if (button->accessibleName() == tooltip(tool))
                QTest::mouseClick(button, Qt::LeftButton);
        }
        QCOMPARE(canvas.editor().tool(), std::optional(tool));
    }

    /// A selection with a line on the left screen.
    static void drawOnTheLeft(Fixture& f)
    {
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {210, 160});
        choose(f.canvas(0), Tool::line);
        f.drag(f.canvas(0), {50, 50}, {150, 100});
        QCOMPARE(f.canvas(0).editor().annotations().size(), 1U);
    }

private Q_SLOTS:
    void pressOnAnotherScreenIsIgnoredWhileThereAreMarks()
    {
        Fixture f;
        drawOnTheLeft(f);
        f.drag(f.canvas(1), {10, 10}, {100, 100});
        QVERIFY(f.canvas(1).selection().isEmpty());
        QVERIFY(!f.canvas(1).selection().isDragging());
        QCOMPARE(f.canvas(0).selection().rect(), QRectF(10, 10, 200, 150));
        QCOMPARE(f.canvas(0).editor().annotations().size(), 1U);
        f.canvas(0).undo();
        f.drag(f.canvas(1), {10, 10}, {100, 100});
        QCOMPARE(f.canvas(1).selection().rect(), QRectF(10, 10, 90, 90));
        QVERIFY(f.canvas(0).selection().isEmpty());
    }

    void pressOnAnotherScreenMakesAMarkOfTheTextAndNoMore()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {210, 160});
        choose(f.canvas(0), Tool::text);
        QTest::mouseClick(&f.canvas(0), Qt::LeftButton, {}, {50, 50});
        QTest::keyClicks(f.canvas(0).findChild<TextField*>(), QStringLiteral("Hola"));
        f.drag(f.canvas(1), {10, 10}, {100, 100});
        QVERIFY(f.canvas(1).selection().isEmpty());
        QCOMPARE(f.canvas(0).editor().annotations().size(), 1U);
        QCOMPARE(f.canvas(0).editor().annotations().front()->text(), QStringLiteral("Hola"));
    }

    void secondPressOfADoubleClickIsTakenCareOfBeforeTheOverlaysGo()
    {
        Fixture f;
        f.controller.begin();
        std::size_t overlaysThen = 0;
        f.panels.onSwallow = [&] { overlaysThen = f.overlays().size(); };
        f.pressEscape();
        QCOMPARE(overlaysThen, 2U);
    }

    void stepsAreReachedFromAnotherScreenWhileNothingIsSelected()
    {
        Fixture f;
        drawOnTheLeft(f);
        f.canvas(0).undo();
        QTest::mouseClick(&f.canvas(0), Qt::LeftButton, {}, {390, 290});
        QVERIFY(f.canvas(0).selection().isEmpty());
        QTest::keyClick(&f.canvas(1), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.canvas(0).editor().annotations().size(), 1U);
        QTest::keyClick(&f.canvas(1), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(f.canvas(0).editor().annotations().empty());
    }
};

BRINDLECAM_TEST(TestSessionScreens);

} // namespace brindlecam

#include "tst_sessionscreens.moc"
