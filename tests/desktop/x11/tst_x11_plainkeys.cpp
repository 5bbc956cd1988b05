// Covers X11HotKeys.
#include "base/KeyCodes.h"
#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11Input.h"
#include "desktop/support/x11/X11Rival.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/keys/X11HotKeys.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

#include <array>

namespace brindlecam {

using desktop::X11ClientWindow;
using test::activate;
using test::display;
using test::settle;

namespace {

constexpr int kPastRepeatMs = 1100; ///< the server repeats after 660 ms

struct Plain {
    PlainKey key;
    Qt::Key typed;
};
constexpr std::array kPlainKeys{Plain{PlainKey::escape, Qt::Key_Escape},
                                Plain{PlainKey::returnKey, Qt::Key_Return},
                                Plain{PlainKey::keypadEnter, Qt::Key_Enter}};

void plainKeyRows()
{
    QTest::addColumn<PlainKey>("key");
    QTest::addColumn<Qt::Key>("typed");
    QTest::newRow("Escape") << kPlainKeys[0].key << kPlainKeys[0].typed;
    QTest::newRow("Return") << kPlainKeys[1].key << kPlainKeys[1].typed;
    QTest::newRow("keypad Enter") << kPlainKeys[2].key << kPlainKeys[2].typed;
}

} // namespace

/// Keys that a session takes while another program has the keyboard.
class TestX11PlainKeys final : public test::TestCase {
    Q_OBJECT

private:
    X11HotKeys m_hotKeys{std::make_shared<X11Events>()};
    std::unique_ptr<TakenKey> m_taken;
    int m_presses = 0;
    desktop::X11Input m_hands{display()};
    std::unique_ptr<X11ClientWindow> m_other; ///< another program, which has the keyboard

    bool otherProgramHasTheKeyboard()
    {
        m_other = std::make_unique<X11ClientWindow>(
            display(), desktop::ClientWindowOptions{.pixels = QRect(300, 300, 200, 200)});
        activate(*m_other);
        const bool has = QTest::qWaitFor([this] { return m_other->hasFocus(); });
        m_other->forget();
        return has;
    }
    bool take(PlainKey key)
    {
        m_taken = m_hotKeys.takeKey(key, [this] { ++m_presses; });
        return m_taken != nullptr;
    }

private Q_SLOTS:
    void cleanup()
    {
        m_hands.letGo();
        m_taken.reset();
        m_other.reset();
        settle();
        m_presses = 0;
    }

    void heldKeyIsHeardOnceAndByNobodyElse_data() { plainKeyRows(); }
    void heldKeyIsHeardOnceAndByNobodyElse()
    {
        QVERIFY(otherProgramHasTheKeyboard());
        QFETCH(PlainKey, key);
        QFETCH(Qt::Key, typed);
        QVERIFY(take(key));
        m_hands.press(typed);
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(kPastRepeatMs);
        m_hands.release(typed);
        settle();
        QCOMPARE(m_presses, 1);
        m_hands.tap(typed);
        QTRY_COMPARE(m_presses, 2);
        settle();
        QCOMPARE(m_other->keyEvents(), 0);
    }

    // A session ends by the press, and the key is still down.
    void keyThatIsGivenBackByItsPressReachesNobodyUntilItIsUp_data() { plainKeyRows(); }
    void keyThatIsGivenBackByItsPressReachesNobodyUntilItIsUp()
    {
        QVERIFY(otherProgramHasTheKeyboard());
        QFETCH(PlainKey, key);
        QFETCH(Qt::Key, typed);
        m_taken = m_hotKeys.takeKey(key, [this] {
            ++m_presses;
            m_taken.reset();
        });
        QVERIFY(m_taken);
        m_hands.press(typed);
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(kPastRepeatMs);
        m_hands.release(typed);
        settle();
        QCOMPARE(m_other->keyEvents(), 0);
        m_hands.tap(typed);
        QTRY_COMPARE(m_other->keyEvents(), 2); // it is theirs again
        QCOMPARE(m_other->keys().front().key, typed);
        QCOMPARE(m_presses, 1);
    }

    void locksDoNotMatter_data()
    {
        QTest::addColumn<PlainKey>("key");
        QTest::addColumn<Qt::Key>("typed");
        QTest::addColumn<QList<Qt::Key>>("locks");
        const QList<Qt::Key> caps{Qt::Key_CapsLock};
        const QList<Qt::Key> num{Qt::Key_NumLock};
        const std::array<std::pair<const char*, QList<Qt::Key>>, 3> all{
            {{"Num Lock", num}, {"Caps Lock", caps}, {"both", num + caps}}};
        for (const Plain& plain : kPlainKeys) {
            for (const auto& [name, locks] : all)
                QTest::addRow("%x with %s", unsigned(plain.typed), name)
                    << plain.key << plain.typed << locks;
        }
    }
    void locksDoNotMatter()
    {
        QVERIFY(otherProgramHasTheKeyboard());
        QFETCH(PlainKey, key);
        QFETCH(Qt::Key, typed);
        QFETCH(QList<Qt::Key>, locks);
        QVERIFY(take(key));
        for (const Qt::Key lock : locks)
            m_hands.tap(lock);
        m_other->forget();
        m_hands.tap(typed);
        QTRY_COMPARE(m_presses, 1);
        settle();
        QCOMPARE(m_other->keyEvents(), 0);
        for (const Qt::Key lock : locks)
            m_hands.tap(lock);
    }

    void otherKeysAndCombinationsStayTheOtherPrograms()
    {
        QVERIFY(otherProgramHasTheKeyboard());
        QVERIFY(take(PlainKey::returnKey));
        m_hands.tap(Qt::Key_Enter);
        m_hands.tap(Qt::Key_A);
        m_hands.chord({Qt::Key_Control, Qt::Key_Return});
        QTRY_COMPARE(m_other->keyEvents(), 8);
        settle();
        QCOMPARE(m_presses, 0);
    }

    void keyOfAnotherProgramIsRefusedAndOthersAreNot()
    {
        desktop::X11Rival rival(display());
        QVERIFY(rival.takeHotKey(Qt::Key_Return, Qt::NoModifier));
        QVERIFY(!take(PlainKey::returnKey));
        QVERIFY(take(PlainKey::keypadEnter));
        m_hands.tap(Qt::Key_Return);
        QVERIFY(QTest::qWaitFor([&rival] { return rival.gotKeys(); }));
        QCOMPARE(m_presses, 0);
        m_hands.tap(Qt::Key_Enter);
        QTRY_COMPARE(m_presses, 1);
    }

    void keyThatIsAHotKeyTooIsTheSessionsMeanwhile()
    {
        QVERIFY(otherProgramHasTheKeyboard());
        int hot = 0;
        QStringList refused;
        m_hotKeys.bind(
            {{QStringLiteral("key"), {}, KeyCodes::kReturn, 0}}, this,
            [&hot](const QString&) { ++hot; }, [&](const QStringList& names) { refused = names; });
        QVERIFY(refused.isEmpty());
        QVERIFY(take(PlainKey::returnKey));
        m_hands.tap(Qt::Key_Return);
        QTRY_COMPARE(m_presses, 1);
        QCOMPARE(hot, 0);
        m_taken.reset();
        m_hands.tap(Qt::Key_Return);
        QTRY_COMPARE(hot, 1);
        QCOMPARE(m_presses, 1);
        // And the other way round: the session keeps what is no hot key any more.
        QVERIFY(take(PlainKey::returnKey));
        m_hotKeys.bind({}, this, {}, [](const QStringList&) {});
        m_hands.tap(Qt::Key_Return);
        QTRY_COMPARE(m_presses, 2);
        settle();
        QCOMPARE(hot, 1);
        QCOMPARE(m_other->keyEvents(), 0);
    }

    // An open menu has the whole keyboard, and these keys leave it or choose from it.
    void openMenuOfOursKeepsThem_data() { plainKeyRows(); }
    void openMenuOfOursKeepsThem()
    {
        QFETCH(PlainKey, key);
        QFETCH(Qt::Key, typed);
        QWidget menu;
        menu.show();
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(take(key));
        const auto cookie =
            xcb_grab_keyboard(x11::connection(), 0, static_cast<xcb_window_t>(menu.winId()),
                              XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const x11::Owned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(x11::connection(), cookie, nullptr));
        QVERIFY(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
        m_hands.tap(typed);
        settle();
        QCOMPARE(m_presses, 0);
        xcb_ungrab_keyboard(x11::connection(), XCB_CURRENT_TIME);
        xcb_flush(x11::connection());
        m_hands.tap(typed);
        QTRY_COMPARE(m_presses, 1);
    }
};

BRINDLECAM_TEST(TestX11PlainKeys);

} // namespace brindlecam

#include "tst_x11_plainkeys.moc"
