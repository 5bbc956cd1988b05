#include "desktop/support/PinTest.h"

namespace brindlecam::desktop {

/// A pin's menu: what it offers, and what goes on while it is open.
class TestPinsMenu final : public PinTest {
    Q_OBJECT

private Q_SLOTS:
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
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsMenu)

#include "tst_pins_menu.moc"
