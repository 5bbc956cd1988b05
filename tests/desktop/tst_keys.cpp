#include "desktop/support/CaptureTest.h"

#include <QProcess>

namespace brindlecam::desktop {

/// The keyboard around a session: hot keys, keys that end it, and who has the focus afterwards.
class TestKeys final : public CaptureTest {
    Q_OBJECT

private:
    static constexpr int kHeldMilliseconds = 2000; ///< the server repeats after 660
    /// In its first second a session takes a lost focus back.
    static constexpr int kInsistsMilliseconds = 1500;
    static constexpr QRect kDragged{300, 250, 200, 150};

    void useDesktopWith(bool windowManager)
    {
        usePatternedDesktop(
            {.windowManager = windowManager ? WindowManager::openbox : WindowManager::none});
        m_below = std::make_unique<ClientWindow>(
            display(), ClientWindowOptions{.pixels = QRect(200, 200, 500, 400)});
        if (!windowManager)
            m_below->takeFocus();
        QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
    }

    void dragged() { input().drag(kDragged.topLeft(), kDragged.topLeft() + QPoint(200, 150)); }

    /// Types into the window below until something arrives, and tells whether it got nothing else.
    bool onlyNowKeysReachTheWindow()
    {
        const auto arrives = [this] {
            input().tap(XK_z);
            return !m_below->keys().empty();
        };
        return waitUntil(arrives) &&
               std::all_of(m_below->keys().begin(), m_below->keys().end(),
                           [](const KeyPress& press) { return press.key == XK_z; });
    }

    /// Other programs' keyboard map is changed the way the desktop's settings would.
    void setKeyboard(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.setProcessEnvironment(desktop().environment());
        process.start(program, arguments);
        QVERIFY(process.waitForFinished(kPatience));
        QCOMPARE(process.exitCode(), 0);
    }

    /// The program takes its keys anew some time after a change.
    bool pressedUntilItWorks()
    {
        const auto opens = [this] {
            pressHotKey(kAreaKey);
            return !overlays().empty();
        };
        if (!waitUntil(opens) || !sessionIsReady())
            return false;
        input().tap(XK_Escape);
        return sessionIsOver();
    }

    std::unique_ptr<ClientWindow> m_below;

private Q_SLOTS:
    void heldKeyEndsTheSessionOnceAndNeverReachesTheWindowBelow_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::addColumn<int>("key");
        for (const bool managed : {true, false}) {
            const char* where = managed ? "window manager" : "bare";
            QTest::addRow("Return, %s", where) << managed << XK_Return;
            QTest::addRow("Enter of the keypad, %s", where) << managed << XK_KP_Enter;
            QTest::addRow("Escape, %s", where) << managed << XK_Escape;
        }
    }
    void heldKeyEndsTheSessionOnceAndNeverReachesTheWindowBelow()
    {
        QFETCH(bool, windowManager);
        QFETCH(int, key);
        useDesktopWith(windowManager);
        startProgram();
        QVERIFY(openArea());
        dragged();
        QVERIFY(waitUntil([this] { return pasted().size() == kDragged.size(); }));
        m_below->forget();
        input().press(static_cast<xcb_keysym_t>(key));
        QVERIFY(sessionIsOver());
        QTest::qWait(kHeldMilliseconds);
        QVERIFY(m_below->keys().empty());
        input().release(static_cast<xcb_keysym_t>(key));
        QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
        QVERIFY(onlyNowKeysReachTheWindow());
        QCOMPARE(history().size(), 1);
        QVERIFY(overlays().empty());
    }

    void heldHotKeyOpensOneSessionAndNeverReachesTheWindowBelow_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::newRow("window manager") << true;
        QTest::newRow("bare") << false;
    }
    void heldHotKeyOpensOneSessionAndNeverReachesTheWindowBelow()
    {
        QFETCH(bool, windowManager);
        useDesktopWith(windowManager);
        startProgram();
        m_below->forget();
        for (const xcb_keysym_t key : {XK_Shift_L, XK_Super_L, XK_9})
            input().press(key);
        QVERIFY(sessionIsReady());
        QTest::qWait(kHeldMilliseconds);
        QCOMPARE(overlays().size(), std::size_t(1));
        dragged();
        for (const xcb_keysym_t key : {XK_9, XK_Super_L, XK_Shift_L})
            input().release(key);
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(XK_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
        for (const KeyPress& press : m_below->keys())
            QVERIFY(press.key == XK_Shift_L || press.key == XK_Super_L); // pressed before
        m_below->forget();
        QVERIFY(onlyNowKeysReachTheWindow());
    }

    void heldFullScreenKeyTakesOnePicture()
    {
        useDesktopWith(true);
        startProgram();
        for (const xcb_keysym_t key : {XK_Shift_L, XK_Super_L, XK_8})
            input().press(key);
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
        QTest::qWait(kHeldMilliseconds);
        for (const xcb_keysym_t key : {XK_8, XK_Super_L, XK_Shift_L})
            input().release(key);
        QVERIFY(toastIsGone());
        QCOMPARE(history().size(), 1);
    }

    void previousWindowHasTheFocusAgain_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::addColumn<int>("key");
        QTest::newRow("copied, window manager") << true << XK_Return;
        QTest::newRow("copied, bare") << false << XK_Return;
        QTest::newRow("cancelled, window manager") << true << XK_Escape;
        QTest::newRow("cancelled, bare") << false << XK_Escape;
    }
    void previousWindowHasTheFocusAgain()
    {
        QFETCH(bool, windowManager);
        QFETCH(int, key);
        useDesktopWith(windowManager);
        const ClientWindow other(display(), {.pixels = QRect(750, 100, 300, 300)});
        m_below->takeFocus();
        QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
        startProgram();
        for (int round = 0; round < 2; ++round) {
            QVERIFY(openArea());
            QVERIFY(!m_below->hasFocus());
            dragged();
            input().tap(static_cast<xcb_keysym_t>(key));
            QVERIFY(sessionIsOver());
            QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
        }
        m_below->forget();
        QVERIFY(onlyNowKeysReachTheWindow());
    }

    void typingIsTheSessionsWhileItLasts()
    {
        useDesktopWith(true);
        startProgram();
        QVERIFY(openArea());
        m_below->forget();
        input().type("abc");
        input().click({450, 400});
        input().tap(XK_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
        QVERIFY(onlyNowKeysReachTheWindow());
        QVERIFY(m_below->clicks().empty());
    }

    void escapeEndsASessionThatHasLostTheFocus_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::newRow("window manager") << true;
        QTest::newRow("bare") << false;
    }
    void escapeEndsASessionThatHasLostTheFocus()
    {
        QFETCH(bool, windowManager);
        useDesktopWith(windowManager);
        startProgram();
        QVERIFY(openArea());
        QTest::qWait(kInsistsMilliseconds);
        m_below->takeFocus();
        QVERIFY(waitUntil([this] { return m_below->hasFocus(); }));
        m_below->forget();
        input().tap(XK_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(onlyNowKeysReachTheWindow());
        // Outside a session the key is everybody's.
        m_below->forget();
        input().tap(XK_Escape);
        QVERIFY(waitUntil([this] { return m_below->keys().size() == 1; }));
    }

    void windowManagerThatFallsBehindDoesNotTakeTheKeyboardAway()
    {
        usePatternedDesktop();
        program().writeSettings({{QStringLiteral("didShowWelcome"), false}});
        startProgram();
        QVERIFY(waitUntil([this] { return dialogs().size() == 1; }));
        const auto active = [this] {
            return desktop().connection().property32(desktop().connection().root(),
                                                     "_NET_ACTIVE_WINDOW");
        };
        const std::vector<std::uint32_t> dialog{dialogs().front().id};
        QVERIFY(waitUntil([&] { return active() == dialog; }));
        // It hears of the dialog's end only when the session has the keyboard, and hands the focus
        // of the dialog to somebody else.
        desktop().pauseWindowManager();
        const bool ready = openArea();
        desktop().resumeWindowManager();
        QVERIFY(ready);
        // A window that comes now is dealt with after all that.
        const ClientWindow last(display(), {.pixels = QRect(900, 100, 200, 100)});
        QVERIFY(waitUntil([&] {
            return !desktop().connection().property32(last.id(), "_NET_FRAME_EXTENTS").empty();
        }));
        QVERIFY(waitUntil([this] { return windows().hasKeyboard(program().pid()); }));
        dragged();
        input().tap(XK_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
    }

    void hotKeyOfAnotherProgramCostsNoOther()
    {
        useDesktopWith(true);
        const Connection other(display());
        for (const xcb_keycode_t code : other.keycodes(XK_8))
            xcb_grab_key(other.raw(), 1, other.root(), XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT, code,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        other.sync();
        startProgram();
        pressHotKey(kFullScreenKey);
        QVERIFY(openArea());
        dragged();
        input().tap(XK_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return toastIsShown(); }));
        QCOMPARE(history().size(), 1);
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(waitUntil([this] { return history().size() == 2; }));
    }

    void hotKeysWorkWithLocksOn_data()
    {
        QTest::addColumn<int>("lock");
        QTest::newRow("Num Lock") << XK_Num_Lock;
        QTest::newRow("Caps Lock") << XK_Caps_Lock;
    }
    void hotKeysWorkWithLocksOn()
    {
        QFETCH(int, lock);
        useDesktopWith(true);
        startProgram();
        input().tap(static_cast<xcb_keysym_t>(lock));
        QVERIFY(openArea());
        dragged();
        input().chord({XK_Control_L, XK_c});
        QVERIFY(sessionIsOver());
        QVERIFY(openArea());
        input().tap(XK_Escape);
        QVERIFY(sessionIsOver());
        input().tap(static_cast<xcb_keysym_t>(lock));
    }

    void hotKeysFollowTheKeyboard()
    {
        useDesktopWith(true);
        startProgram();
        // On this layout the digits need Shift; the keys stay where they are.
        setKeyboard(QStringLiteral("setxkbmap"), {QStringLiteral("fr")});
        QVERIFY(pressedUntilItWorks());
        setKeyboard(QStringLiteral("xmodmap"),
                    {QStringLiteral("-e"), QStringLiteral("clear mod3"), QStringLiteral("-e"),
                     QStringLiteral("clear mod4"), QStringLiteral("-e"),
                     QStringLiteral("add mod3 = Super_L")});
        QVERIFY(pressedUntilItWorks());
    }

    void modifiersMatchExactly()
    {
        useDesktopWith(true);
        startProgram();
        m_below->forget();
        input().chord({XK_Super_L, XK_9});
        input().chord({XK_Shift_L, XK_9});
        input().chord({XK_Control_L, XK_Shift_L, XK_Super_L, XK_9});
        const auto nines = [this] {
            return std::count_if(m_below->keys().begin(), m_below->keys().end(),
                                 [](const KeyPress& press) { return press.key == XK_9; });
        };
        QVERIFY(waitUntil([&] { return nines() == 3; }));
        QVERIFY(overlays().empty());
    }

    void menuOfAnotherProgramKeepsTheHotKeysAndGivesThemBack()
    {
        useDesktopWith(true);
        startProgram();
        const Connection menu(display());
        const auto cookie = xcb_grab_keyboard(menu.raw(), 1, menu.root(), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const Owned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(menu.raw(), cookie, nullptr));
        QVERIFY(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
        input().chord({XK_Shift_L, XK_Super_L, kFullScreenKey});
        // A command needs no key.
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
        xcb_ungrab_keyboard(menu.raw(), XCB_CURRENT_TIME);
        menu.sync();
        QVERIFY(toastIsGone());
        QCOMPARE(history().size(), 1);
        QVERIFY(openArea());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestKeys)

#include "tst_keys.moc"
