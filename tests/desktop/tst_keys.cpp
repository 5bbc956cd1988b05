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
        m_below = desktop().open({.pixels = QRect(200, 200, 500, 400)});
        QVERIFY(worksIn(*m_below));
    }

    /// Types into the window below until something arrives, and tells whether it got nothing else.
    bool onlyNowKeysReachTheWindow()
    {
        const auto arrives = [this] {
            input().tap(Qt::Key_Z);
            return !m_below->keys().empty();
        };
        return waitUntil(arrives) &&
               std::all_of(m_below->keys().begin(), m_below->keys().end(),
                           [](const KeyPress& press) { return press.key == Qt::Key_Z; });
    }

    /// The way a desktop's settings would.
    void changeModifiers(const QStringList& expressions)
    {
        QStringList arguments;
        for (const QString& expression : expressions)
            arguments << QStringLiteral("-e") << expression;
        QProcess process;
        process.setProcessEnvironment(desktop().environment());
        process.start(QStringLiteral("xmodmap"), arguments);
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
        input().tap(Qt::Key_Escape);
        return sessionIsOver();
    }

    std::unique_ptr<ClientWindow> m_below;

private Q_SLOTS:
    void heldKeyEndsTheSessionOnceAndNeverReachesTheWindowBelow_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::addColumn<Qt::Key>("key");
        for (const bool managed : {true, false}) {
            const char* where = managed ? "window manager" : "bare";
            QTest::addRow("Return, %s", where) << managed << Qt::Key_Return;
            QTest::addRow("Enter of the keypad, %s", where) << managed << Qt::Key_Enter;
            QTest::addRow("Escape, %s", where) << managed << Qt::Key_Escape;
        }
    }
    void heldKeyEndsTheSessionOnceAndNeverReachesTheWindowBelow()
    {
        QFETCH(bool, windowManager);
        QFETCH(Qt::Key, key);
        useDesktopWith(windowManager);
        startProgram();
        QVERIFY(openArea());
        select(kDragged);
        QVERIFY(waitUntil([this] { return pasted().size() == kDragged.size(); }));
        m_below->forget();
        input().press(key);
        QVERIFY(sessionIsOver());
        QTest::qWait(kHeldMilliseconds);
        QVERIFY(m_below->keys().empty());
        input().release(key);
        QVERIFY(getsFocus(*m_below));
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
        for (const Qt::Key key : hotKey(kAreaKey))
            input().press(key);
        QVERIFY(sessionIsReady());
        QTest::qWait(kHeldMilliseconds);
        QCOMPARE(overlays().size(), std::size_t(1));
        select(kDragged);
        input().letGo();
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(getsFocus(*m_below));
        for (const KeyPress& press : m_below->keys())
            QVERIFY(press.key == Qt::Key_Shift || press.key == Qt::Key_Super_L); // pressed before
        m_below->forget();
        QVERIFY(onlyNowKeysReachTheWindow());
    }

    void heldFullScreenKeyTakesOnePicture()
    {
        useDesktopWith(true);
        startProgram();
        // Super first, as some hands do.
        for (const Qt::Key key : {Qt::Key_Super_L, Qt::Key_Shift, kFullScreenKey})
            input().press(key);
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
        QTest::qWait(kHeldMilliseconds);
        input().letGo();
        QVERIFY(toastIsGone());
        QCOMPARE(history().size(), 1);
    }

    void previousWindowHasTheFocusAgain_data()
    {
        QTest::addColumn<bool>("windowManager");
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("copied, window manager") << true << Qt::Key_Return;
        QTest::newRow("copied, bare") << false << Qt::Key_Return;
        QTest::newRow("cancelled, window manager") << true << Qt::Key_Escape;
        QTest::newRow("cancelled, bare") << false << Qt::Key_Escape;
    }
    void previousWindowHasTheFocusAgain()
    {
        QFETCH(bool, windowManager);
        QFETCH(Qt::Key, key);
        useDesktopWith(windowManager);
        const auto other = desktop().open({.pixels = QRect(750, 100, 300, 300)});
        m_below->takeFocus();
        QVERIFY(getsFocus(*m_below));
        startProgram();
        for (int round = 0; round < 2; ++round) {
            QVERIFY(openArea());
            QVERIFY(!m_below->hasFocus());
            select(kDragged);
            input().tap(key);
            QVERIFY(sessionIsOver());
            QVERIFY(getsFocus(*m_below));
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
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(getsFocus(*m_below));
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
        QVERIFY(getsFocus(*m_below));
        m_below->forget();
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(onlyNowKeysReachTheWindow());
        // Outside a session the key is everybody's.
        m_below->forget();
        input().tap(Qt::Key_Escape);
        QVERIFY(waitUntil([this] { return m_below->keys().size() == 1; }));
    }

    void windowManagerThatFallsBehindDoesNotTakeTheKeyboardAway()
    {
        usePatternedDesktop();
        program().writeSettings({{QStringLiteral("didShowWelcome"), false}});
        startProgram();
        QVERIFY(dialogOpens());
        const auto active = [this] { return windows().active(); };
        const WindowId dialog = dialogs().front().id;
        QVERIFY(waitUntil([&] { return active() == dialog; }));
        // It hears of the dialog's end only when the session has the keyboard, and hands the focus
        // of the dialog to somebody else.
        desktop().pauseWindowManager();
        const bool ready = openArea();
        desktop().resumeWindowManager();
        QVERIFY(ready);
        // A window that comes now is dealt with after all that.
        const auto last = desktop().open({.pixels = QRect(900, 100, 200, 100)});
        QVERIFY(waitUntil([&] { return last->isFramed(); }));
        QVERIFY(programHasKeyboard());
        select(kDragged);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
    }

    void hotKeyOfAnotherProgramCostsNoOther()
    {
        useDesktopWith(true);
        const auto other = desktop().rival();
        QVERIFY(other->takeHotKey(kFullScreenKey, kHotKeyModifiers));
        startProgram();
        pressHotKey(kFullScreenKey);
        QVERIFY(openArea());
        select(kDragged);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(toastComes());
        QCOMPARE(history().size(), 1);
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(waitUntil([this] { return history().size() == 2; }));
    }

    void hotKeysWorkWithLocksOn_data()
    {
        QTest::addColumn<Qt::Key>("lock");
        QTest::newRow("Num Lock") << Qt::Key_NumLock;
        QTest::newRow("Caps Lock") << Qt::Key_CapsLock;
    }
    void hotKeysWorkWithLocksOn()
    {
        QFETCH(Qt::Key, lock);
        useDesktopWith(true);
        startProgram();
        input().tap(lock);
        QVERIFY(openArea());
        select(kDragged);
        input().chord({Qt::Key_Control, Qt::Key_C});
        QVERIFY(sessionIsOver());
        QVERIFY(openArea());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        input().tap(lock);
    }

    void hotKeysFollowTheKeyboard()
    {
        useDesktopWith(true);
        startProgram();
        // On this layout the digits need Shift; the keys stay where they are.
        desktop().setKeyboard(QStringLiteral("fr"));
        QVERIFY(pressedUntilItWorks());
        changeModifiers({QStringLiteral("clear mod3"), QStringLiteral("clear mod4"),
                         QStringLiteral("add mod3 = Super_L")});
        QVERIFY(pressedUntilItWorks());
    }

    void modifiersMatchExactly()
    {
        useDesktopWith(true);
        startProgram();
        m_below->forget();
        input().chord({Qt::Key_Super_L, Qt::Key_9});
        input().chord({Qt::Key_Shift, Qt::Key_9});
        input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Super_L, Qt::Key_9});
        const auto nines = [this] {
            return std::count_if(m_below->keys().begin(), m_below->keys().end(),
                                 [](const KeyPress& press) { return press.key == Qt::Key_9; });
        };
        QVERIFY(waitUntil([&] { return nines() == 3; }));
        QVERIFY(overlays().empty());
    }

    void menuOfAnotherProgramKeepsTheHotKeysAndGivesThemBack()
    {
        useDesktopWith(true);
        startProgram();
        const auto menu = desktop().rival();
        QVERIFY(menu->takeKeyboard());
        pressHotKeyAtOnce(kFullScreenKey);
        // A command needs no key.
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(waitUntil([this] { return history().size() == 1; }));
        menu->giveBackKeyboardAndPointer();
        QVERIFY(toastIsGone());
        QCOMPARE(history().size(), 1);
        QVERIFY(openArea());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestKeys)

#include "tst_keys.moc"
