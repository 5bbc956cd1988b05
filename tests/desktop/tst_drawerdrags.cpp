#include "desktop/DrawerTest.h"

#include <QUrl>

namespace brindlecam::desktop {

/// Captures that are dragged out of the drawer, to another client.
class TestDrawerDrags final : public DrawerTest {
    Q_OBJECT

private:
    static constexpr QRect kTarget{100, 100, 300, 200};

    /// Opens the drawer and drags the first tile until it is over the target, which has noticed.
    [[nodiscard]] bool dragOnto(const DropTarget& target)
    {
        if (!openDrawer() || !shows(0, kColours[0]))
            return false;
        input().moveTo(tile(0).center());
        input().press(Button::left);
        input().glideTo(target.pixels().center(), 20);
        return waitUntil([&] {
            input().glideTo(target.pixels().center() + QPoint(5, 0), 2);
            input().glideTo(target.pixels().center(), 2);
            return target.wasEntered();
        });
    }

    /// The drag's picture is gone and the program has come back to its usual business, which takes
    /// no hand's time.
    [[nodiscard]] bool dragIsOver()
    {
        constexpr int kWrong = 64;
        return waitUntil([this] { return windows().shown(program().pid()).size() == 1; }) &&
               program().answerTo("1 nada %2F\n") == kWrong;
    }

private Q_SLOTS:
    void aDropHandsOverTheFileAndCloses_data()
    {
        QTest::addColumn<Compositor>("compositor");
        QTest::newRow("plain") << Compositor::none;
        QTest::newRow("picom") << Compositor::picom;
    }
    void aDropHandsOverTheFileAndCloses()
    {
        QFETCH(Compositor, compositor);
        useDrawer({.compositor = compositor});
        const auto target = desktop().openDropTarget(kTarget, DropManners::takes);
        QVERIFY(dragOnto(*target));
        input().release(Button::left);
        QVERIFY(waitUntil([&] { return target->dropped().has_value(); }));
        const QString newest = history().constLast();
        QCOMPARE(target->dropped()->trimmed(), QUrl::fromLocalFile(newest).toEncoded());
        QVERIFY(drawerIsGone());
        QVERIFY(!clipboardIsTaken());
        QCOMPARE(history().size(), 3);
        QVERIFY(openDrawer());
    }

    void aDropThatIsRefusedLeavesTheDrawer()
    {
        useDrawer();
        const auto target = desktop().openDropTarget(kTarget, DropManners::refuses);
        QVERIFY(dragOnto(*target));
        input().release(Button::left);
        QVERIFY(dragIsOver());
        QVERIFY(drawerIsOpen());
        QVERIFY(!target->dropped());
        QVERIFY(!clipboardIsTaken());
        input().click(tile(1).center());
        QVERIFY(isPastedEntry(kColours[1]));
    }

    void aTargetThatDiesLeavesTheDrawer()
    {
        useDrawer();
        const auto target = desktop().openDropTarget(kTarget, DropManners::dies);
        QVERIFY(dragOnto(*target));
        input().release(Button::left);
        QVERIFY(dragIsOver());
        QVERIFY(drawerIsOpen());
        QVERIFY(!clipboardIsTaken());
        input().click(tile(1).center());
        QVERIFY(isPastedEntry(kColours[1]));
    }

    void aDropOnTheDrawerItselfIsRefused()
    {
        useDrawer();
        QVERIFY(openDrawer());
        input().drag(tile(0).center(), tile(2).center());
        QVERIFY(dragIsOver());
        QVERIFY(drawerIsOpen());
        input().click(tile(1).center());
        QVERIFY(isPastedEntry(kColours[1]));
    }

    void escapeEndsTheDragFirst()
    {
        useDrawer();
        const auto target = desktop().openDropTarget(kTarget, DropManners::takes);
        QVERIFY(dragOnto(*target));
        input().tap(Qt::Key_Escape);
        input().release(Button::left);
        QVERIFY(dragIsOver());
        QVERIFY(drawerIsOpen());
        QVERIFY(!target->dropped());
        input().tap(Qt::Key_Escape);
        QVERIFY(drawerIsGone());
    }

    void aCaptureInMidDragTakesTheDrawerAway()
    {
        useDrawer();
        const QImage before = screen().grabAtRest();
        QVERIFY(openDrawer());
        input().moveTo(tile(0).center());
        input().press(Button::left);
        input().glideTo({600, 300}, 20);
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(drawerIsGone());
        QVERIFY(waitUntil([this] { return pasted().size() == screen().pixels().size(); }));
        QVERIFY(samePixels(pasted(), before));
        input().release(Button::left);
        QVERIFY(toastIsGone());
        QVERIFY(openDrawer());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestDrawerDrags)

#include "tst_drawerdrags.moc"
