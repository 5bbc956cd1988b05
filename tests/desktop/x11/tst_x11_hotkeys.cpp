#include "base/KeyCodes.h"
#include "base/KeyCombo.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11HotKeys.h"
#include "support/TestCase.h"
#include "x11/InputClient.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QSignalSpy>

#include <array>

namespace brindlecam {

using test::InputClient;
using test::run;
using test::settle;
using test::xdotool;

namespace {

constexpr int kKey9 = 25; ///< virtual code of the digit 9
constexpr std::uint8_t kKey9Code = 18;
constexpr int kF15 = 113; ///< virtual code; Pause arrives as it, too
constexpr std::uint8_t kPauseCode = 127;
constexpr std::uint8_t kF15Code = 193;
constexpr int kControlShift = controlModifier | shiftModifier;
constexpr int kPastRepeatMs = 1100; ///< the server repeats after 660 ms

int statesGrabbableBy(InputClient& other, std::uint8_t code, std::uint16_t state)
{
    int grabbed = 0;
    for (const std::uint16_t locks : x11::ModifierBits::read().lockStates())
        grabbed += other.grabKey(code, state | locks) ? 1 : 0;
    other.ungrabKeys();
    return grabbed;
}

} // namespace

class TestX11HotKeys final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();
    X11HotKeys m_hotKeys{m_events};
    int m_presses = 0;

    std::unique_ptr<HotKeyRegistration> take(int key, int modifiers)
    {
        return m_hotKeys.registerKey(key, modifiers, [this] { ++m_presses; });
    }

    static bool takesKeyboard(xcb_window_t window)
    {
        const auto cookie = xcb_grab_keyboard(x11::connection(), 0, window, XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const x11::Owned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(x11::connection(), cookie, nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

private Q_SLOTS:
    void cleanup()
    {
        xdotool(QStringLiteral("keyup 9 keyup Escape keyup ctrl keyup shift"));
        settle();
        m_presses = 0;
    }

    void heldKeyFiresOnce()
    {
        const auto registration = take(kKey9, kControlShift);
        QVERIFY(registration);
        QVERIFY(xdotool(QStringLiteral("keydown ctrl keydown shift keydown 9")));
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(kPastRepeatMs);
        QCOMPARE(m_presses, 1);
        QVERIFY(xdotool(QStringLiteral("keyup 9 keydown 9")));
        QTRY_COMPARE(m_presses, 2);
    }

    void heldKeyDoesNotFireForARegistrationMadeMeanwhile()
    {
        auto registration = take(kKey9, kControlShift);
        QVERIFY(xdotool(QStringLiteral("keydown ctrl keydown shift keydown 9")));
        QTRY_COMPARE(m_presses, 1);
        registration.reset();
        registration = take(kKey9, kControlShift);
        QTest::qWait(kPastRepeatMs);
        QCOMPARE(m_presses, 1);
    }

    void keyHeldBeforeItsRegistrationDoesNotFireUntilPressedAgain()
    {
        QVERIFY(xdotool(QStringLiteral("keydown ctrl keydown shift keydown 9")));
        auto registration = take(kKey9, kControlShift);
        QTest::qWait(kPastRepeatMs);
        QCOMPARE(m_presses, 0);
        QVERIFY(xdotool(QStringLiteral("keyup 9 keydown 9")));
        QTRY_COMPARE(m_presses, 1);
    }

    void firesWithLocksOn_data()
    {
        QTest::addColumn<QString>("lock");
        QTest::newRow("Num Lock") << QStringLiteral("Num_Lock");
        QTest::newRow("Caps Lock") << QStringLiteral("Caps_Lock");
    }
    void firesWithLocksOn()
    {
        QFETCH(QString, lock);
        const auto registration = take(kKey9, kControlShift);
        QVERIFY(xdotool(QStringLiteral("key ") + lock));
        QVERIFY(xdotool(QStringLiteral("keydown ctrl keydown shift key 9")));
        QTRY_COMPARE(m_presses, 1);
        QVERIFY(xdotool(QStringLiteral("keyup ctrl keyup shift key ") + lock));
    }

    void firesForEachModifier_data()
    {
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("keys");
        QTest::newRow("Super") << int(commandModifier) << QStringLiteral("super");
        QTest::newRow("Alt") << int(optionModifier) << QStringLiteral("alt");
        QTest::newRow("Control") << int(controlModifier) << QStringLiteral("ctrl");
    }
    void firesForEachModifier()
    {
        QFETCH(int, modifiers);
        QFETCH(QString, keys);
        const auto registration = take(kKey9, modifiers);
        QVERIFY(registration);
        QVERIFY(xdotool(QStringLiteral("key 9 key ctrl+shift+9")));
        QVERIFY(
            xdotool(QStringLiteral("keydown ") + keys + QStringLiteral(" key 9 keyup ") + keys));
        QTRY_COMPARE(m_presses, 1);
        settle();
        QCOMPARE(m_presses, 1);
    }

    void refusedKeyIsNullAndLeavesNothingGrabbed()
    {
        InputClient other(QRect(10, 10, 50, 50));
        constexpr std::uint16_t kState = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
        // One lock combination is enough.
        QVERIFY(other.grabKey(kKey9Code, kState | XCB_MOD_MASK_LOCK));
        QVERIFY(!take(kKey9, kControlShift));
        other.ungrabKeys();
        QCOMPARE(statesGrabbableBy(other, kKey9Code, kState),
                 int(x11::ModifierBits::read().lockStates().size()));
        QVERIFY(take(kKey9, kControlShift));
    }

    void keyOfTwoPlacesWorksAtTheOneThatIsFree()
    {
        InputClient other(QRect(10, 10, 50, 50));
        QVERIFY(other.grabKey(kPauseCode, 0));
        auto registration = take(kF15, 0);
        QVERIFY(registration);
        QVERIFY(xdotool(QStringLiteral("key 127")));
        QTRY_COMPARE(other.keyEvents(), 2);
        QVERIFY(xdotool(QStringLiteral("key 193")));
        QTRY_COMPARE(m_presses, 1);
        settle();
        QCOMPARE(m_presses, 1); // Pause stays the other one's
        registration.reset();
        QVERIFY(other.grabKey(kF15Code, 0));
    }

    void keyOfTwoPlacesIsRefusedWhenNeitherIsFree()
    {
        InputClient other(QRect(10, 10, 50, 50));
        QVERIFY(other.grabKey(kPauseCode, 0));
        QVERIFY(other.grabKey(kF15Code, 0));
        QVERIFY(!take(kF15, 0));
        other.ungrabKeys();
        const int states = int(x11::ModifierBits::read().lockStates().size());
        QCOMPARE(statesGrabbableBy(other, kPauseCode, 0), states);
        QCOMPARE(statesGrabbableBy(other, kF15Code, 0), states);
    }

    void secondRegistrationOfAKeyOfTwoPlacesSurvivesTheFirst()
    {
        InputClient other(QRect(10, 10, 50, 50));
        QVERIFY(other.grabKey(kPauseCode, 0));
        auto first = take(kF15, 0);
        const auto second = take(kF15, 0);
        first.reset();
        QVERIFY(xdotool(QStringLiteral("key 193")));
        QTRY_COMPARE(m_presses, 1);
    }

    void destroyedRegistrationGivesTheKeyBack()
    {
        InputClient other(QRect(10, 10, 50, 50));
        constexpr std::uint16_t kState = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
        auto registration = take(kKey9, kControlShift);
        QCOMPARE(statesGrabbableBy(other, kKey9Code, kState), 0);
        registration.reset();
        QVERIFY(statesGrabbableBy(other, kKey9Code, kState) > 0);
    }

    void secondRegistrationOfACombinationSurvivesTheFirst()
    {
        auto first = take(kKey9, kControlShift);
        const auto second = take(kKey9, kControlShift);
        first.reset();
        QVERIFY(xdotool(QStringLiteral("key ctrl+shift+9")));
        QTRY_COMPARE(m_presses, 1);
    }

    void callbackMayDestroyItsRegistration()
    {
        std::unique_ptr<HotKeyRegistration> registration;
        registration = m_hotKeys.registerKey(kKey9, kControlShift, [&] {
            registration.reset();
            ++m_presses;
        });
        QVERIFY(xdotool(QStringLiteral("key ctrl+shift+9")));
        QTRY_COMPARE(m_presses, 1);
        QVERIFY(xdotool(QStringLiteral("key ctrl+shift+9")));
        settle();
        QCOMPARE(m_presses, 1);
    }

    void keysAreGrabbedAgainWhenTheModifiersMove()
    {
        const auto bits = x11::ModifierBits::read();
        QCOMPARE(bits.super, std::uint16_t(XCB_MOD_MASK_4));
        const auto registration = take(kKey9, commandModifier);
        QVERIFY(run(QStringLiteral("xmodmap"),
                    {QStringLiteral("-e"), QStringLiteral("clear mod3"), QStringLiteral("-e"),
                     QStringLiteral("clear mod4"), QStringLiteral("-e"),
                     QStringLiteral("add mod3 = Super_L")}));
        settle();
        QCOMPARE(x11::ModifierBits::read().super, std::uint16_t(XCB_MOD_MASK_3));
        InputClient other(QRect(10, 10, 50, 50));
        QTRY_COMPARE(statesGrabbableBy(other, kKey9Code, XCB_MOD_MASK_3), 0);
        QVERIFY(statesGrabbableBy(other, kKey9Code, XCB_MOD_MASK_4) > 0);
        QVERIFY(xdotool(QStringLiteral("keydown super key 9 keyup super")));
        QTRY_COMPARE(m_presses, 1);

        QVERIFY(run(QStringLiteral("setxkbmap"), {QStringLiteral("us")}));
        settle();
        QTRY_COMPARE(statesGrabbableBy(other, kKey9Code, XCB_MOD_MASK_4), 0);
    }

    // A menu has the whole keyboard. It may have closed by itself when the key that came to it is
    // looked at.
    void keyThatCameToAMenuFiresThoughTheMenuIsGone()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto area = take(kKey9, kControlShift);
        const auto escape = take(KeyCodes::kEscape, 0);
        QVERIFY(takesKeyboard(static_cast<xcb_window_t>(window.winId())));
        QVERIFY(xdotool(QStringLiteral("key ctrl+shift+9")));
        QTRY_COMPARE(m_presses, 1);
        // This one was for the menu.
        QVERIFY(xdotool(QStringLiteral("key Escape")));
        settle();
        QCOMPARE(m_presses, 1);
        xcb_ungrab_keyboard(x11::connection(), XCB_CURRENT_TIME);
        xcb_flush(x11::connection());
        QVERIFY(xdotool(QStringLiteral("key Escape")));
        QTRY_COMPARE(m_presses, 2);
    }

    void windowThatKeepsKeysFromEverybodyKeepsThemFromUs()
    {
        const auto area = take(kKey9, kControlShift);
        const xcb_window_t sink = xcb_generate_id(x11::connection());
        const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS};
        xcb_create_window(x11::connection(), XCB_COPY_FROM_PARENT, sink, x11::root(), -10, -10, 1,
                          1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(x11::connection(), sink);
        QVERIFY(takesKeyboard(sink));
        QVERIFY(xdotool(QStringLiteral("key ctrl+shift+9")));
        settle();
        QCOMPARE(m_presses, 0);
        xcb_destroy_window(x11::connection(), sink);
        xcb_flush(x11::connection());
        QVERIFY(xdotool(QStringLiteral("key ctrl+shift+9")));
        QTRY_COMPARE(m_presses, 1);
    }

    void keyThatAnotherProgramMadeUpDoesNotFire()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto area = take(kKey9, kControlShift);
        xcb_key_press_event_t made{};
        made.response_type = XCB_KEY_PRESS;
        made.detail = kKey9Code;
        made.root = x11::root();
        made.event = static_cast<xcb_window_t>(window.winId());
        made.state = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
        made.same_screen = 1;
        xcb_send_event(x11::connection(), 0, made.event, XCB_EVENT_MASK_KEY_PRESS,
                       reinterpret_cast<const char*>(&made));
        xcb_flush(x11::connection());
        settle();
        QCOMPARE(m_presses, 0);
    }

    void escapeAloneCanBeTakenAndFiresOnce()
    {
        QLineEdit field;
        field.show();
        QVERIFY(QTest::qWaitForWindowExposed(&field));
        QTRY_VERIFY(x11::setFocus(static_cast<xcb_window_t>(field.winId())));
        QTRY_VERIFY(field.hasFocus());
        const auto registration = take(KeyCodes::kEscape, 0);
        QVERIFY(registration);
        QSignalSpy focusMoved(qGuiApp, &QGuiApplication::focusWindowChanged);
        QVERIFY(xdotool(QStringLiteral("keydown Escape")));
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(kPastRepeatMs);
        QVERIFY(xdotool(QStringLiteral("keyup Escape")));
        settle();
        QCOMPARE(m_presses, 1);
        // The grab looked like a lost focus; Qt must not have believed it.
        QCOMPARE(focusMoved.count(), 0);
        QVERIFY(field.hasFocus());
    }
};

BRINDLECAM_TEST(TestX11HotKeys);

} // namespace brindlecam

#include "tst_x11_hotkeys.moc"
