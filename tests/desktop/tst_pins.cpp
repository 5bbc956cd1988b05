#include "desktop/support/PinTest.h"

#include <QDir>

namespace brindlecam::desktop {

/// Pins by real drags: where they appear, how they move, what their menu does.
class TestPins final : public PinTest {
    Q_OBJECT

private:
    /// The border of a pin under the pointer.
    static QColor hovered() { return {46, 179, 77}; }

    static void addSurroundings()
    {
        QTest::addColumn<WindowManager>("windowManager");
        QTest::addColumn<Compositor>("compositor");
        QTest::newRow("openbox") << WindowManager::openbox << Compositor::none;
        QTest::newRow("openbox and picom") << WindowManager::openbox << Compositor::picom;
        QTest::newRow("bare") << WindowManager::none << Compositor::none;
        QTest::newRow("picom alone") << WindowManager::none << Compositor::picom;
    }

    void useSurroundings()
    {
        QFETCH(WindowManager, windowManager);
        QFETCH(Compositor, compositor);
        usePins({.windowManager = windowManager, .compositor = compositor});
        QVERIFY(pinArea());
    }

    [[nodiscard]] QImage captured() const { return before().copy(kDragged); }

private Q_SLOTS:
    void pinCoversExactlyWhatWasCaptured_data() { addSurroundings(); }
    void pinCoversExactlyWhatWasCaptured()
    {
        useSurroundings();
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(shows(kDragged, captured()));
        // Its border is drawn over the picture, so it can be told from what lies below.
        QVERIFY(waitUntil([this] {
            return screen().pixel({500, 250}) != before().pixelColor(500, 250);
        }));
        QCOMPARE(screen().pixel(kDragged.topLeft()), before().pixelColor(kDragged.topLeft()));
        QVERIFY(isPasted(captured()));
        QVERIFY(isOnlyInHistory(captured()));
        QVERIFY(captures().empty());
        QVERIFY(!toastIsShown());
    }

    void dragMovesItByTheSameWay_data() { addSurroundings(); }
    void dragMovesItByTheSameWay()
    {
        useSurroundings();
        input().drag({500, 400}, {637, 309});
        const QRect moved = kDragged.translated(137, -91);
        QVERIFY(isOnlyPin(moved));
        QVERIFY(shows(moved, captured()));
        input().drag({637, 309}, {500, 400}, 3);
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(shows(kDragged, captured()));
    }

    void pinMovesPartlyOffTheScreen_data() { addSurroundings(); }
    void pinMovesPartlyOffTheScreen()
    {
        useSurroundings();
        input().drag({310, 400}, {5, 790});
        QVERIFY(isOnlyPin(kDragged.translated(-305, 390)));
        input().drag({50, 700}, {900, 5});
        QVERIFY(isOnlyPin(kDragged.translated(545, -305)));
    }

    void wheelResizesItAroundItsCentre_data() { addSurroundings(); }
    void wheelResizesItAroundItsCentre()
    {
        useSurroundings();
        input().click({500, 400}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(290, 243, 420, 315).translated(0, 0)) ||
                isOnlyPin(QRect(290, 242, 420, 315)));
        for (int turn = 0; turn < 60; ++turn)
            input().click({500, 400}, Button::wheelDown);
        QVERIFY(isOnlyPin(QRect(460, 370, 80, 60)));
        for (int turn = 0; turn < 80; ++turn)
            input().click({500, 400}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(-100, -50, 1200, 900)));
    }

    void pinKeepsTheSizeItHadAfterMovingIt()
    {
        usePins();
        QVERIFY(pinArea());
        for (int turn = 0; turn < 60; ++turn)
            input().click({500, 400}, Button::wheelDown);
        QVERIFY(isOnlyPin(QRect(460, 370, 80, 60)));
        input().drag({500, 400}, {600, 500});
        QVERIFY(isOnlyPin(QRect(560, 470, 80, 60)));
        input().click({600, 500}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(558, 469, 84, 63)) || isOnlyPin(QRect(558, 468, 84, 63)));
    }

    void borderIsGreenUnderThePointer()
    {
        usePins();
        QVERIFY(pinArea());
        QVERIFY(screen().pixel({500, 250}) != hovered());
        input().moveTo({500, 400});
        QVERIFY(waitUntil([&] { return screen().pixel({500, 250}) == hovered(); }));
        QVERIFY(shows(kDragged, captured()));
        input().moveTo(kAside);
        QVERIFY(waitUntil([&] { return screen().pixel({500, 250}) != hovered(); }));
    }

    void singleClickDoesNothingAndDoubleClickCloses_data() { addSurroundings(); }
    void singleClickDoesNothingAndDoubleClickCloses()
    {
        useSurroundings();
        QVERIFY(isPasted(captured()));
        const ClipboardReader reader(display());
        const xcb_window_t owner = reader.owner();
        input().click({500, 400});
        QTest::qWait(600); // longer than a double click may take
        QVERIFY(isOnlyPin(kDragged));
        QCOMPARE(reader.owner(), owner);
        QVERIFY(isPasted(captured()));
        QVERIFY(isOnlyInHistory(captured()));
        doubleClickPin({500, 400});
        QVERIFY(pinsAreGone());
        QVERIFY(program().isRunning());
    }

    void focusedPinIgnoresEscapeAndDelete()
    {
        usePins();
        QVERIFY(pinArea());
        input().click({500, 400});
        QVERIFY(waitUntil([this] { return windows().hasKeyboard(program().pid()); }));
        input().tap(XK_Escape);
        input().tap(XK_Delete);
        input().tap(XK_Return);
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(openArea()); // all those keys have arrived
        input().tap(XK_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyPin(kDragged));
    }

    void menuCopiesAgain_data() { addSurroundings(); }
    void menuCopiesAgain()
    {
        useSurroundings();
        QVERIFY(isOnlyInHistory(captured()));
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([this] { return history().size() == 2; }));
        QVERIFY(toastIsGone());
        const int files = captures().size();
        QVERIFY(openMenu({500, 400}));
        choose(1);
        QVERIFY(waitUntil([this] { return toastIsShown(); }));
        QVERIFY(isPasted(captured()));
        QVERIFY(menus().empty());
        QCOMPARE(history().size(), 2);
        QCOMPARE(captures().size(), files);
        QVERIFY(isOnlyPin(kDragged));
    }

    void menuSavesThroughTheSavePanel_data() { addSurroundings(); }
    void menuSavesThroughTheSavePanel()
    {
        useSurroundings();
        QVERIFY(openMenu({500, 400}));
        choose(2);
        QVERIFY(waitUntil([this] { return dialogs().size() == 1; }));
        // The pin has the keyboard until the panel takes it.
        QVERIFY(waitUntil([this] {
            input().tap(XK_Return);
            return dialogs().empty();
        }));
        QVERIFY(isOnlyCapture(captured()));
        QVERIFY(isOnlyInHistory(captured()));
        QVERIFY(isOnlyPin(kDragged));
    }

    void menuCloses_data() { addSurroundings(); }
    void menuCloses()
    {
        useSurroundings();
        QVERIFY(openMenu({500, 400}));
        choose(3);
        QVERIFY(pinsAreGone());
        QVERIFY(menus().empty());
    }

    void menuGoesAwayWithoutAChoice_data() { addSurroundings(); }
    void menuGoesAwayWithoutAChoice()
    {
        useSurroundings();
        QVERIFY(openMenu({500, 400}));
        QVERIFY(menus().front().pixels.contains(510, 410));
        QVERIFY(waitUntil([this] {
            input().tap(XK_Escape);
            return menus().empty();
        }));
        QVERIFY(openMenu({600, 450})); // not a double click
        // A menu that has just been mapped may not have the pointer yet.
        QVERIFY(waitUntil([this] {
            input().click({100, 100});
            return menus().empty();
        }));
        QVERIFY(isOnlyPin(kDragged));
    }

    void keysOpenTheMenuOfAFocusedPin_data() { addSurroundings(); }
    void keysOpenTheMenuOfAFocusedPin()
    {
        useSurroundings();
        input().click({500, 400});
        QVERIFY(waitUntil([this] { return windows().hasKeyboard(program().pid()); }));
        input().tap(XK_Menu);
        QVERIFY(waitUntil([this] { return menus().size() == 1; }));
        input().tap(XK_Escape);
        QVERIFY(waitUntil([this] { return menus().empty(); }));
        input().chord({XK_Shift_L, XK_F10});
        QVERIFY(waitUntil([this] { return menus().size() == 1; }));
        choose(3);
        QVERIFY(pinsAreGone());
    }

    void closingOneOfTwoPinsLeavesTheOther()
    {
        usePins();
        const QRect other(800, 100, 300, 200);
        QVERIFY(pinArea());
        QVERIFY(pinArea(other));
        doubleClickPin({500, 400});
        QVERIFY(isOnlyPin(other));
        QVERIFY(shows(other, before().copy(other)));
        doubleClickPin({900, 200});
        QVERIFY(pinsAreGone());
    }

    void newCaptureShowsThePinsOnTheScreen()
    {
        usePins();
        QVERIFY(pinArea());
        input().drag({500, 400}, {600, 430});
        const QRect moved = kDragged.translated(100, 30);
        QVERIFY(isOnlyPin(moved));
        input().moveTo(kAside);
        QVERIFY(waitUntil([&] {
            return screen().pixel({moved.center().x(), moved.top()}) != hovered();
        }));
        const QImage now = screen().grabAtRest();
        QVERIFY(!samePixels(now, before()));
        QVERIFY(openArea());
        input().drag({250, 200}, {1200, 700});
        input().tap(XK_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(now.copy(250, 200, 950, 500)));
        QVERIFY(isOnlyPin(moved));
    }

    void pinsEndWithTheProgram()
    {
        usePins();
        QVERIFY(pinArea());
        QCOMPARE(program().quit(), 0);
        program().start();
        QVERIFY(pins().empty());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPins)

#include "tst_pins.moc"
