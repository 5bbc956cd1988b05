// Covers X11ForeignPresses.
#include "desktop/DrawerTest.h"

#include <QFile>

#include <algorithm>

namespace brindlecam::desktop {

/// The drawer of recent captures: how it comes and goes, and who has the keyboard.
class TestDrawer final : public DrawerTest {
    Q_OBJECT

private:
    static void addSurroundings()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::addColumn<Compositor>("compositor");
        QTest::newRow("openbox") << WindowManager::openbox << Compositor::none;
        QTest::newRow("openbox and picom") << WindowManager::openbox << Compositor::picom;
        QTest::newRow("bare") << WindowManager::none << Compositor::none;
    }
    void useSurroundings()
    {
        QFETCH(WindowManager, windowManager);
        QFETCH(Compositor, compositor);
        useDrawer({.windowManager = windowManager, .compositor = compositor});
    }

private Q_SLOTS:
    void comesAndGoesByKeyCommandAndEscape_data() { addSurroundings(); }
    void comesAndGoesByKeyCommandAndEscape()
    {
        useSurroundings();
        const auto below = desktop().open({.pixels = {100, 100, 400, 300}});
        QVERIFY(worksIn(*below));
        QVERIFY(openDrawer());
        QCOMPARE(drawers().front().pixels, QRect(297, 574, 686, 212));
        for (int i = 0; i < 3; ++i)
            QVERIFY(shows(i, kColours.at(static_cast<std::size_t>(i))));
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Escape);
        QVERIFY(drawerIsGone());
        QVERIFY(getsFocus(*below));

        QCOMPARE(program().command({QStringLiteral("recents")}).exitCode, 0);
        QVERIFY(drawerIsOpen());
        QCOMPARE(program().command({QStringLiteral("recents")}).exitCode, 0);
        QVERIFY(drawerIsGone());
        QVERIFY(getsFocus(*below));
        QVERIFY(openDrawer());
        pressHotKey(kRecentsKey);
        QVERIFY(drawerIsGone());
        // What Escape did for the drawer it does for nobody any more.
        below->forget();
        input().tap(Qt::Key_Escape);
        QVERIFY(waitUntil([&] { return below->keys().size() == 1; }));
    }

    void isRoundOverWhatLiesBeneath_data() { addSurroundings(); }
    void isRoundOverWhatLiesBeneath()
    {
        useSurroundings();
        const QImage before = screen().grabAtRest();
        QVERIFY(openDrawer());
        const QRect place = drawers().front().pixels;
        QVERIFY(shows(2, kColours.back()));
        const QImage seen = screen().grabAtRest();
        for (const QPoint corner :
             {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight()})
            QCOMPARE(seen.pixelColor(corner), before.pixelColor(corner));
        QVERIFY(seen.pixelColor(place.center().x(), place.bottom() - 6).lightness() < 80);
        input().tap(Qt::Key_Escape);
        QVERIFY(drawerIsGone());
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), before); }));
    }

    void aPressElsewhereClosesItAndIsNotLost_data() { addSurroundings(); }
    void aPressElsewhereClosesItAndIsNotLost()
    {
        useSurroundings();
        const auto below = desktop().open({.pixels = {100, 100, 400, 300}});
        QVERIFY(openDrawer());
        below->forget();
        input().click(below->pixels().center());
        QVERIFY(drawerIsGone());
        QVERIFY(waitUntil([&] { return below->clicks().size() == 1; }));
        if (desktop().hasWindowManager())
            QVERIFY(getsFocus(*below));
    }

    void aPressOnItIsNoneElsewhere()
    {
        useDrawer();
        QVERIFY(openDrawer());
        input().click(drawers().front().pixels.topLeft() + QPoint(300, 20), Button::left);
        input().click(drawers().front().pixels.topLeft() + QPoint(300, 20), Button::right);
        QVERIFY(shows(0, kColours[0]));
        QVERIFY(drawerIsOpen());
    }

    void aPressOnItTakesTheKeyboardBack_data() { addSurroundings(); }
    void aPressOnItTakesTheKeyboardBack()
    {
        useSurroundings();
        const auto other = desktop().open({.pixels = {100, 100, 400, 300}});
        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        QVERIFY(turnsTo(*other)); // as to a file manager that shows a capture
        QVERIFY(drawerIsOpen());
        input().click(drawers().front().pixels.topLeft() + QPoint(300, 20));
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_End);
        input().tap(Qt::Key_Return);
        QVERIFY(isPastedEntry(kColours[2]));
        QVERIFY(drawerIsGone());
        QVERIFY(getsFocus(*other));
    }

    void aClickOnATileGivesTheKeyboardBackToWhoeverHadItThen_data() { addSurroundings(); }
    void aClickOnATileGivesTheKeyboardBackToWhoeverHadItThen()
    {
        useSurroundings();
        const auto before = desktop().open({.pixels = {520, 100, 200, 300}});
        const auto other = desktop().open({.pixels = {100, 100, 400, 300}});
        QVERIFY(turnsTo(*before));
        QVERIFY(openDrawer());
        QVERIFY(programHasKeyboard());
        QVERIFY(turnsTo(*other));
        QVERIFY(shows(1, kColours[1]));
        input().click(tile(1).center());
        QVERIFY(isPastedEntry(kColours[1]));
        QVERIFY(drawerIsGone());
        QVERIFY(getsFocus(*other));
    }

    void isInNoCapture_data() { addSurroundings(); }
    void isInNoCapture()
    {
        useSurroundings();
        const QImage before = screen().grabAtRest();
        QVERIFY(openDrawer());
        pressHotKeyAtOnce(kFullScreenKey);
        QVERIFY(waitUntil([this] { return pasted().size() == screen().pixels().size(); }));
        QVERIFY(samePixels(pasted(), before));
        QVERIFY(drawers().empty());
        QVERIFY(toastIsGone());

        QVERIFY(openDrawer());
        pressHotKeyAtOnce(kAreaKey);
        QVERIFY(sessionIsReady());
        QVERIFY(drawers().empty());
        const QRect area(300, 560, 600, 230); // where it was
        select(area);
        QCOMPARE(program().command({QStringLiteral("recents")}).exitCode, 4);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(before.copy(area)));
        QVERIFY(drawers().empty());
    }

    void aPressElsewhereClosesItAfterARemoval()
    {
        useDrawer({.accessibility = Accessibility::on});
        QVERIFY(openDrawer());
        QVERIFY(choose(0, "Quitar de recientes"));
        QVERIFY(shows(0, kColours[1]));
        input().click({100, 100});
        QVERIFY(drawerIsGone());
    }

    void escapeClosesItsMenuFirst()
    {
        useDrawer();
        QVERIFY(openDrawer());
        input().click(tile(0).center(), Button::right);
        QVERIFY(waitUntil([this] { return menus().size() == 1; }));
        QVERIFY(escapeMenu());
        QVERIFY(drawerIsOpen());
        input().tap(Qt::Key_Escape);
        QVERIFY(drawerIsGone());
    }

    void opensOnTheMonitorUnderThePointer()
    {
        useDrawer({.screen = {.pixels = {1600, 800},
                              .monitors = {{QStringLiteral("LEFT"), {0, 0, 800, 800}},
                                           {QStringLiteral("RIGHT"), {800, 0, 800, 800}}}}});
        input().moveTo({1200, 100});
        QVERIFY(openDrawer());
        QVERIFY(QRect(800, 0, 800, 800).contains(drawers().front().pixels));
        input().click(tile(0).center());
        QVERIFY(toastComes());
        QVERIFY(QRect(800, 0, 800, 800).contains(toasts().front().pixels));
        QVERIFY(drawerIsGone());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestDrawer)

#include "tst_drawer.moc"
