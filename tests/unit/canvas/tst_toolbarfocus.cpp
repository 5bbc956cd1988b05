#include "canvas/ToolbarFixture.h"
#include "preferences/Config.h"

#include <QLineEdit>

namespace brindlecam {

using test::ToolbarFixture;

class TestToolbarFocus final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void tabWalksTheBarsInOrderAndComesBackToTheCanvas()
    {
        ToolbarFixture f;
        QVERIFY(f.activate());
        QVERIFY(!f.bars.holdsFocus());
        std::vector<BarButton*> expected = f.tools();
        expected.insert(expected.end(), f.actions().begin(), f.actions().end());
        for (BarButton* button : expected) {
            QTest::keyClick(f.canvas.focusWidget() ? f.canvas.focusWidget() : &f.canvas,
                            Qt::Key_Tab);
            QCOMPARE(f.canvas.window()->focusWidget(), button);
            QVERIFY(f.bars.holdsFocus());
        }
        QTest::keyClick(expected.back(), Qt::Key_Tab);
        QCOMPARE(f.canvas.window()->focusWidget(), &f.canvas);
        QTest::keyClick(&f.canvas, Qt::Key_Backtab);
        QCOMPARE(f.canvas.window()->focusWidget(), expected.back());
    }

    void tabGoesThroughAnOpenPopupAfterItsButton()
    {
        ToolbarFixture f;
        QVERIFY(f.activate());
        f.bars.showSizePopup(Tool::pen);
        QWidget* walker = &f.toolButton(Tool::pen);
        walker->setFocus(Qt::TabFocusReason);
        PaletteView& popup = f.sizePopup(Tool::pen);
        for (QWidget* next : std::vector<QWidget*>{&popup.minus(), &popup.track(), &popup.plus(),
                                                   &f.toolButton(Tool::line)}) {
            QTest::keyClick(walker, Qt::Key_Tab);
            QCOMPARE(f.canvas.window()->focusWidget(), next);
            walker = next;
        }
    }

    void disabledButtonsAreLeftOutOfTheWalk()
    {
        ToolbarFixture f;
        QVERIFY(f.activate());
        f.bars.setAvailable(Toolbar::Action::text, Toolbar::Availability::disabled);
        f.tools().back()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(f.tools().back(), Qt::Key_Tab);
        QCOMPARE(f.canvas.window()->focusWidget(), f.actions().at(1));
    }

    void returnEscapeAndArrowsReachTheCanvasFromAButton()
    {
        ToolbarFixture f;
        QVERIFY(f.activate());
        f.tools().front()->setFocus(Qt::TabFocusReason);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Left})
            QTest::keyClick(f.tools().front(), key);
        QCOMPARE(f.canvas.keys, (std::vector<int>{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Left}));
        QCOMPARE(f.taken(), QStringList());
        QTest::keyClick(f.tools().front(), Qt::Key_Space);
        QCOMPARE(f.taken(), QStringList(QStringLiteral("pointer")));
    }

    void aClickLeavesTheFocusWhereItIs()
    {
        ToolbarFixture f;
        QLineEdit field(&f.canvas);
        field.move(10, 10);
        QVERIFY(f.activate());
        field.setFocus();
        f.bars.togglePalette();
        const auto click = [&f](const QWidget& control) {
            const QPoint centre = control.mapTo(&f.canvas, control.rect().center());
            QTest::mouseClick(f.canvas.windowHandle(), Qt::LeftButton, {}, centre);
        };
        click(f.toolButton(Tool::arrow));
        click(*f.actions().at(4));
        click(*f.palette().swatches().at(3));
        click(f.palette().track());
        QTest::mouseClick(f.canvas.windowHandle(), Qt::LeftButton, {},
                          f.bar(Qt::Vertical).geometry().topLeft() + QPoint(2, 2));
        QCOMPARE(f.canvas.window()->focusWidget(), &field);
        QCOMPARE(f.taken(),
                 (QStringList{QStringLiteral("arrow"), QStringLiteral("action 4"),
                              Config::palette.at(3).name(), QStringLiteral("opacity 0.5")}));
    }

    void theFocusOfAPopupThatClosesGoesToItsButton()
    {
        ToolbarFixture f;
        QVERIFY(f.activate());
        f.bars.togglePalette();
        f.palette().swatches().front()->setFocus(Qt::TabFocusReason);
        f.bars.hidePopups();
        QCOMPARE(f.canvas.window()->focusWidget(), &f.colorButton());
    }

    void theFocusOfBarsThatHideGoesToTheCanvas()
    {
        ToolbarFixture f;
        QVERIFY(f.activate());
        f.bars.showSizePopup(Tool::pen);
        f.sizePopup(Tool::pen).track().setFocus(Qt::TabFocusReason);
        QVERIFY(f.bars.holdsFocus());
        f.bars.hide();
        QVERIFY(!f.bars.holdsFocus());
        QCOMPARE(f.canvas.window()->focusWidget(), &f.canvas);
    }
};

BRINDLECAM_TEST(TestToolbarFocus);

} // namespace brindlecam

#include "tst_toolbarfocus.moc"
