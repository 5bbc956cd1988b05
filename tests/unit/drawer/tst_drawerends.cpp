// Covers RecentDrawer.
#include "DrawerFixture.h"
#include "drawer/CapturePreview.h"
#include "drawer/PreviewWindow.h"
#include "support/TestCase.h"

#include <QPointer>

namespace brindlecam {

using test::DrawerFixture;

namespace {

constexpr std::pair kEscapeOfDrawer{KeyCodes::kEscape, 0};

} // namespace

/// How the drawer goes: by keys, presses and captures, and with what it stands on.
class TestDrawerEnds final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void escapeClosesItWhoeverHasTheKeyboard()
    {
        DrawerFixture f;
        f.add();
        f.open();
        QVERIFY(f.hotKeys.registered.contains(kEscapeOfDrawer));
        const QPointer<DrawerPanel> panel(&f.panel());
        f.hotKeys.press(KeyCodes::kEscape, 0);
        QVERIFY(!f.drawer.isOpen());
        QVERIFY(!f.hotKeys.registered.contains(kEscapeOfDrawer));
        QVERIFY(!f.presses.watched());
        QVERIFY(panel && panel->isVisible()); // on its way out
        QTRY_VERIFY(!panel);
    }

    void theFocusGoesBackUnlessItIsElsewhere()
    {
        DrawerFixture f;
        f.add();
        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
        f.drawer.hide();
        QCOMPARE(f.front.givenBack, 1);

        QWidget other;
        f.open();
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        f.drawer.hide();
        QCOMPARE(f.front.givenBack, 1);
    }

    void hearsNothingOnItsWayOut()
    {
        DrawerFixture f;
        f.addMany(2);
        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
        f.key(Qt::Key_Right);
        const QPointer<DrawerPanel> panel(&f.panel());
        CaptureTile& tile = f.tile();
        PanelButton* const clear = panel->findChild<PanelButton*>();
        const QImage before = panel->grab().toImage();
        f.drawer.hide();
        for (QWidget* const target : std::vector<QWidget*>{panel, &tile, clear}) {
            for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Delete, Qt::Key_Right,
                                      Qt::Key_Tab, Qt::Key_Escape})
                test::sendKey(*target, key);
            test::sendClick(*target);
            QContextMenuEvent menu(QContextMenuEvent::Mouse, {20, 10}, {20, 10}, Qt::NoModifier);
            QCoreApplication::sendEvent(target, &menu);
        }
        test::sendAllPostedEvents();
        QVERIFY(panel && panel->isVisible());
        QVERIFY(!f.drawer.isOpen());
        QVERIFY(f.opener.previewed.isEmpty());
        QVERIFY(!f.question());
        QVERIFY(f.panels.menus.empty());
        QCOMPARE(f.pasteboard.changes, 0);
        QCOMPARE(f.history.items().size(), 2);
        // Nor can it be seen by anything but the mark of the tile that had the keys.
        const QRect others = panel->rect().adjusted(300, 0, 0, 0);
        QCOMPARE(panel->grab(others).toImage(), before.copy(others));
    }

    void standsStillOnItsWayOut()
    {
        DrawerFixture f;
        f.addMany(12);
        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
        const QPointer<DrawerPanel> panel(&f.panel());
        panel->row().scrollTo(400);
        f.drawer.hide();
        QCOMPARE(panel->row().scrolled(), 400.0);
    }

    void aPressInAnotherProgramClosesItAndLeavesTheFocusThere()
    {
        DrawerFixture f;
        f.add();
        f.open();
        f.panel().activateWindow();
        QVERIFY(!f.drawer.wasJustPressedAway());
        f.presses.press();
        QVERIFY(!f.drawer.isOpen());
        QVERIFY(f.drawer.wasJustPressedAway());
        QCOMPARE(f.front.givenBack, 0);
        QTRY_VERIFY(!f.drawer.wasJustPressedAway());
    }

    void theLossOfTheKeyboardClosesItWhereNobodyTellsOfPresses()
    {
        DrawerFixture f;
        f.presses.tells = false;
        f.add();
        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
        QVERIFY(f.drawer.isOpen());
        QWidget other;
        other.show();
        other.activateWindow();
        QTRY_VERIFY(!f.drawer.isOpen());
    }

    void theLossOfTheKeyboardAloneIsNoReason()
    {
        DrawerFixture f;
        f.add();
        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(f.drawer.isOpen());
    }

    void leavesAtOnceForACapture()
    {
        DrawerFixture f;
        f.add();
        f.open();
        const QPointer<DrawerPanel> panel(&f.panel());
        QVERIFY(f.drawer.leave(ScreenCover::Focus::isTaken));
        QVERIFY(!panel);
        QVERIFY(!f.drawer.isOpen());
        QCOMPARE(f.front.givenBack, 0);
        QVERIFY(!f.drawer.leave(ScreenCover::Focus::isTaken));
        // Also while it opens, and while it goes.
        f.drawer.show();
        QVERIFY(!f.drawer.leave(ScreenCover::Focus::isTaken));
        test::sendAllPostedEvents();
        QVERIFY(!f.drawer.panel());
        f.open();
        f.drawer.hide();
        QVERIFY(f.drawer.leave(ScreenCover::Focus::isTaken));
        QCOMPARE(f.panels.visibleNow(), 0);
    }

    void takesItsQuestionAlong_data()
    {
        QTest::addColumn<bool>("atOnce");
        QTest::addColumn<int>("givenBack");
        QTest::newRow("for a capture") << true << 0;
        QTest::newRow("closed") << false << 1;
    }
    void takesItsQuestionAlong()
    {
        QFETCH(bool, atOnce);
        QFETCH(int, givenBack);
        DrawerFixture f;
        f.addMany(3);
        f.open();
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Delete);
        const QPointer<QMessageBox> question(f.question());
        QVERIFY(question);
        question->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(question));
        if (atOnce)
            f.drawer.leave(ScreenCover::Focus::isTaken);
        else
            f.drawer.hide();
        QVERIFY(!f.question());
        QCOMPARE(f.front.givenBack, givenBack); // the question had the keyboard
        test::sendAllPostedEvents();
        QVERIFY(!question);
        QVERIFY(!f.drawer.isOpen());
        QCOMPARE(f.history.items().size(), 3);
        // The next one is not in the middle of a question.
        f.open();
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Delete);
        QVERIFY(f.question());
        f.answer("Cancelar");
        f.presses.press();
        QVERIFY(!f.drawer.isOpen());
    }

    void takesItsPreviewAlong()
    {
        DrawerFixture f;
        f.add();
        f.open();
        f.key(Qt::Key_Space);
        QTRY_VERIFY(f.drawer.largePreview().window()->isVisible());
        QVERIFY(f.drawer.leave(ScreenCover::Focus::isTaken));
        QVERIFY(!f.drawer.largePreview().window());
    }

    void aDropElsewhereClosesItAndARefusedOneDoesNot()
    {
        DrawerFixture f;
        f.add();
        f.open();
        f.tile().onDragBegins();
        f.presses.press(); // cannot be: the drag has the pointer
        f.tile().onDragEnds(CaptureTile::Drag::refused);
        QVERIFY(f.drawer.isOpen());
        f.tile().onDragBegins();
        f.tile().onDragEnds(CaptureTile::Drag::dropped);
        QVERIFY(!f.drawer.isOpen());
    }

    void goesWithItsScreen()
    {
        DrawerFixture f;
        f.displays.pointerAt = QPoint(2000, 50);
        f.add();
        f.open();
        f.displays.change(); // of something else
        QVERIFY(f.drawer.isOpen());
        f.displays.all.pop_back();
        f.displays.change();
        QVERIFY(!f.drawer.isOpen());
        QCOMPARE(f.panels.visibleNow(), 0);
    }
};

BRINDLECAM_TEST(TestDrawerEnds);

} // namespace brindlecam

#include "tst_drawerends.moc"
