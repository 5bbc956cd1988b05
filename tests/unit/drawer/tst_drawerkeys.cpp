// Covers DrawerPanel, RecentDrawer.
#include "DrawerFixture.h"
#include "support/TestCase.h"

#include <QFileInfo>

namespace brindlecam {

using test::DrawerFixture;

/// The drawer by keys alone.
class TestDrawerKeys final : public test::TestCase {
    Q_OBJECT

private:
    /// Opens a drawer with so many entries that has the keyboard.
    static void openActive(DrawerFixture& f, int entries)
    {
        f.addMany(entries);
        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
    }

private Q_SLOTS:
    void arrowsHomeAndEndWalkThroughTheTiles()
    {
        DrawerFixture f;
        openActive(f, 4);
        const TileRow& row = f.panel().row();
        QCOMPARE(row.focusedIndex(), -1);
        const std::vector<std::pair<Qt::Key, int>> walk{
            {Qt::Key_Right, 0}, {Qt::Key_Right, 1}, {Qt::Key_Right, 2}, {Qt::Key_Left, 1},
            {Qt::Key_End, 3},   {Qt::Key_Right, 3}, {Qt::Key_Home, 0},  {Qt::Key_Left, 0}};
        for (const auto& [key, index] : walk) {
            f.key(key);
            QCOMPARE(row.focusedIndex(), index);
        }
    }

    void tabGoesToTheButtonAndBack()
    {
        DrawerFixture f;
        openActive(f, 3);
        auto* const clear = f.panel().findChild<PanelButton*>();
        f.key(Qt::Key_Tab);
        QCOMPARE(f.panel().row().focusedIndex(), 0);
        f.key(Qt::Key_Tab);
        QVERIFY(clear->hasFocus());
        f.key(Qt::Key_Backtab);
        QCOMPARE(f.panel().row().focusedIndex(), 0);
    }

    void aPressLeavesTheKeysWhereTheyAre()
    {
        DrawerFixture f;
        openActive(f, 4);
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Right);
        QTest::mouseClick(&f.tile(0), Qt::RightButton);
        QCOMPARE(f.panel().row().focusedIndex(), 1);
        QTest::mouseClick(&f.panel(), Qt::LeftButton, {}, QPoint(4, 4));
        QCOMPARE(f.panel().row().focusedIndex(), 1);
    }

    void returnCopiesTheFocusedTile()
    {
        DrawerFixture f;
        openActive(f, 3);
        f.key(Qt::Key_Return);
        QVERIFY(f.drawer.isOpen()); // none has the keys yet
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Right);
        const QString chosen = f.tile(1).path();
        f.key(Qt::Key_Return);
        QVERIFY(!f.drawer.isOpen());
        QTRY_COMPARE(f.pasteboard.png, test::contentOf(chosen));
    }

    void spacePreviewsTheNewestUnlessAnotherIsMeant()
    {
        DrawerFixture f;
        openActive(f, 3);
        const QString newest = f.tile(0).path();
        f.key(Qt::Key_Space);
        QVERIFY(!f.drawer.isOpen());
        QCOMPARE(f.opener.previewed, QStringList{newest});

        f.open();
        const QString hovered = f.tile(2).path();
        f.tile(2).setHovering(true);
        f.key(Qt::Key_Space);
        QCOMPARE(f.opener.previewed.back(), hovered);

        f.open();
        f.panel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.panel()));
        f.tile(2).setHovering(true);
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Right);
        const QString focused = f.tile(1).path();
        f.key(Qt::Key_Space);
        QCOMPARE(f.opener.previewed.back(), focused);
    }

    void spaceDoesNothingWithoutTiles()
    {
        DrawerFixture f;
        openActive(f, 0);
        f.key(Qt::Key_Space);
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Tab);
        QVERIFY(f.drawer.isOpen());
        QVERIFY(f.opener.previewed.isEmpty());
    }

    void escapeClosesIt()
    {
        DrawerFixture f;
        openActive(f, 1);
        f.key(Qt::Key_Escape);
        QVERIFY(!f.drawer.isOpen());
        QCOMPARE(f.front.givenBack, 1);
    }

    void deleteAsksFirst()
    {
        DrawerFixture f;
        openActive(f, 3);
        f.key(Qt::Key_Delete);
        QVERIFY(!f.question()); // none has the keys
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Right);
        const QString chosen = f.tile(1).path();
        f.key(Qt::Key_Delete);
        QVERIFY(f.question());
        QCOMPARE(f.question()->text(), QStringLiteral("¿Quitar esta captura de recientes?"));
        QVERIFY(!f.hotKeys.registered.contains({KeyCodes::kEscape, 0})); // it is the question's
        f.key(Qt::Key_Delete);                                           // no second question
        f.answer("Cancelar");
        QVERIFY(QFileInfo::exists(chosen));
        QVERIFY(f.drawer.isOpen());
        QVERIFY(f.hotKeys.registered.contains({KeyCodes::kEscape, 0}));

        f.key(Qt::Key_Delete);
        f.answer("Quitar");
        QTRY_COMPARE(f.tiles().size(), std::size_t(2));
        QVERIFY(!QFileInfo::exists(chosen));
        QCOMPARE(f.panel().row().focusedIndex(), 1); // the next one has the keys
    }

    void theDrawerStaysWhileTheQuestionIsOpen()
    {
        DrawerFixture f;
        openActive(f, 2);
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Delete);
        f.presses.press(); // on the question's frame, which is the window manager's
        QVERIFY(f.drawer.isOpen());
        f.answer("Cancelar");
        f.presses.press();
        QVERIFY(!f.drawer.isOpen());
    }

    void shiftF10OpensTheMenuOfTheFocusedTile()
    {
        DrawerFixture f;
        openActive(f, 2);
        QTest::keyClick(&f.panel(), Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(f.panels.menus.empty());
        f.key(Qt::Key_Right);
        QTest::keyClick(&f.tile(0), Qt::Key_F10, Qt::ShiftModifier);
        QCOMPARE(f.panels.menus.size(), std::size_t(1));
        QCOMPARE(f.panels.menus.back().over, &f.tile(0));
    }

    void otherKeysDoNothing()
    {
        DrawerFixture f;
        openActive(f, 2);
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_F5, Qt::Key_Up, Qt::Key_Down})
            f.key(key);
        QVERIFY(f.drawer.isOpen());
        QCOMPARE(f.pasteboard.changes, 0);
    }
};

BRINDLECAM_TEST(TestDrawerKeys);

} // namespace brindlecam

#include "tst_drawerkeys.moc"
