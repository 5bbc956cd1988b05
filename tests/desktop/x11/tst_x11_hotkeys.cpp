// Covers KeyGrab, PressFilter, X11Events, X11Keyboard.
#include "base/KeyCodes.h"
#include "base/KeyCombo.h"
#include "desktop/support/x11/X11Hardware.h"
#include "desktop/support/x11/X11Input.h"
#include "desktop/support/x11/X11Rival.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11HotKeys.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>

#include <array>
#include <optional>

namespace brindlecam {

using desktop::X11Rival;
using test::display;
using test::settle;

namespace {

constexpr int kKey9 = 25; ///< virtual code of the digit 9
constexpr std::uint8_t kKey9Code = 18;
constexpr int kF15 = 113; ///< virtual code; Pause arrives as it, too
constexpr std::uint8_t kPauseCode = 127;
constexpr std::uint8_t kF15Code = 193;
constexpr int kControlShift = controlModifier | shiftModifier;
const QList<Qt::Key> kCombination{Qt::Key_Control, Qt::Key_Shift, Qt::Key_9};
constexpr int kPastRepeatMs = 1100; ///< the server repeats after 660 ms

int statesGrabbableBy(X11Rival& other, std::uint8_t code, std::uint16_t state)
{
    int grabbed = 0;
    for (const std::uint16_t locks : x11::ModifierBits::read().lockStates())
        grabbed += other.takeCode(code, state | locks) ? 1 : 0;
    other.giveBackHotKeys();
    return grabbed;
}

} // namespace

class TestX11HotKeys final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();
    X11HotKeys m_hotKeys{m_events};
    std::unique_ptr<QObject> m_context = std::make_unique<QObject>(); ///< of what is bound
    std::function<void()> m_whenPressed; ///< runs inside a bound key's callback
    QString m_heard;                     ///< the name that was pressed last
    int m_presses = 0;
    desktop::X11Input m_hands{display()};

    /// The names that are refused; the answer must have come by the time that the call returns.
    QStringList refusedOf(const std::vector<HotKeyWish>& wishes)
    {
        std::optional<QStringList> refused;
        m_hotKeys.bind(
            wishes, m_context.get(),
            [this](const QString& name) {
                if (m_whenPressed)
                    m_whenPressed();
                m_heard = name;
                ++m_presses;
            },
            [&refused](const QStringList& names) { refused = names; });
        return refused.value_or(QStringList(QStringLiteral("no answer")));
    }
    bool bind(int key, int modifiers)
    {
        return refusedOf({{QStringLiteral("key"), {}, key, modifiers}}).isEmpty();
    }
    bool unbind() { return refusedOf({}).isEmpty(); }

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
        m_hands.letGo();
        m_context = std::make_unique<QObject>();
        m_whenPressed = nullptr;
        QVERIFY(unbind());
        settle();
        m_presses = 0;
    }

    void heldKeyFiresOnce()
    {
        QVERIFY(bind(kKey9, kControlShift));
        for (const Qt::Key key : kCombination)
            m_hands.press(key);
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(kPastRepeatMs);
        QCOMPARE(m_presses, 1);
        m_hands.release(Qt::Key_9);
        m_hands.press(Qt::Key_9);
        QTRY_COMPARE(m_presses, 2);
    }

    void heldKeyDoesNotFireForASetBoundMeanwhile()
    {
        QVERIFY(bind(kKey9, kControlShift));
        for (const Qt::Key key : kCombination)
            m_hands.press(key);
        QTRY_COMPARE(m_presses, 1);
        QVERIFY(unbind());
        QVERIFY(bind(kKey9, kControlShift));
        QTest::qWait(kPastRepeatMs);
        QCOMPARE(m_presses, 1);
    }

    void keyHeldBeforeItIsBoundDoesNotFireUntilPressedAgain()
    {
        for (const Qt::Key key : kCombination)
            m_hands.press(key);
        QVERIFY(bind(kKey9, kControlShift));
        QTest::qWait(kPastRepeatMs);
        QCOMPARE(m_presses, 0);
        m_hands.release(Qt::Key_9);
        m_hands.press(Qt::Key_9);
        QTRY_COMPARE(m_presses, 1);
    }

    void firesWithLocksOn_data()
    {
        QTest::addColumn<Qt::Key>("lock");
        QTest::newRow("Num Lock") << Qt::Key_NumLock;
        QTest::newRow("Caps Lock") << Qt::Key_CapsLock;
    }
    void firesWithLocksOn()
    {
        QFETCH(Qt::Key, lock);
        QVERIFY(bind(kKey9, kControlShift));
        m_hands.tap(lock);
        m_hands.chord(kCombination);
        QTRY_COMPARE(m_presses, 1);
        m_hands.tap(lock);
    }

    void firesForEachModifier_data()
    {
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Super") << int(commandModifier) << Qt::Key_Super_L;
        QTest::newRow("Alt") << int(optionModifier) << Qt::Key_Alt;
        QTest::newRow("Control") << int(controlModifier) << Qt::Key_Control;
    }
    void firesForEachModifier()
    {
        QFETCH(int, modifiers);
        QFETCH(Qt::Key, key);
        QVERIFY(bind(kKey9, modifiers));
        m_hands.tap(Qt::Key_9);
        m_hands.chord(kCombination);
        m_hands.chord({key, Qt::Key_9});
        QTRY_COMPARE(m_presses, 1);
        settle();
        QCOMPARE(m_presses, 1);
    }

    void refusedKeyIsNamedAndLeavesNothingGrabbed()
    {
        X11Rival other(display());
        constexpr std::uint16_t kState = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
        // One lock combination is enough.
        QVERIFY(other.takeCode(kKey9Code, kState | XCB_MOD_MASK_LOCK));
        QCOMPARE(refusedOf({{QStringLiteral("key"), {}, kKey9, kControlShift}}),
                 QStringList(QStringLiteral("key")));
        other.giveBackHotKeys();
        QCOMPARE(statesGrabbableBy(other, kKey9Code, kState),
                 int(x11::ModifierBits::read().lockStates().size()));
        QVERIFY(bind(kKey9, kControlShift));
    }

    void keyOfTwoPlacesWorksAtTheOneThatIsFree()
    {
        X11Rival other(display());
        QVERIFY(other.takeCode(kPauseCode, 0));
        QVERIFY(bind(kF15, 0));
        m_hands.tapCode(kPauseCode);
        QVERIFY(QTest::qWaitFor([&other] { return other.gotKeys(); }));
        m_hands.tapCode(kF15Code);
        QTRY_COMPARE(m_presses, 1);
        settle();
        QCOMPARE(m_presses, 1); // Pause stays the other one's
        QVERIFY(unbind());
        QVERIFY(other.takeCode(kF15Code, 0));
    }

    void keyOfTwoPlacesIsRefusedWhenNeitherIsFree()
    {
        X11Rival other(display());
        QVERIFY(other.takeCode(kPauseCode, 0));
        QVERIFY(other.takeCode(kF15Code, 0));
        QVERIFY(!bind(kF15, 0));
        other.giveBackHotKeys();
        const int states = int(x11::ModifierBits::read().lockStates().size());
        QCOMPARE(statesGrabbableBy(other, kPauseCode, 0), states);
        QCOMPARE(statesGrabbableBy(other, kF15Code, 0), states);
    }

    void keyOfTwoPlacesThatIsBoundAnewByItsOwnPressStaysOurs()
    {
        X11Rival other(display());
        QVERIFY(other.takeCode(kPauseCode, 0));
        m_whenPressed = [this] { QVERIFY(bind(kF15, 0)); };
        QVERIFY(bind(kF15, 0));
        m_hands.tapCode(kF15Code);
        QTRY_COMPARE(m_presses, 1);
        m_hands.tapCode(kF15Code);
        QTRY_COMPARE(m_presses, 2);
    }

    void anEmptySetGivesTheKeyBack()
    {
        X11Rival other(display());
        constexpr std::uint16_t kState = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
        QVERIFY(bind(kKey9, kControlShift));
        QCOMPARE(statesGrabbableBy(other, kKey9Code, kState), 0);
        QVERIFY(unbind());
        QVERIFY(statesGrabbableBy(other, kKey9Code, kState) > 0);
    }

    void keyBoundToEscapeIsBackOnceASessionGivesItBack()
    {
        QVERIFY(bind(KeyCodes::kEscape, 0));
        int escapes = 0;
        auto escape = m_hotKeys.takeKey(PlainKey::escape, [&] { ++escapes; });
        QVERIFY(escape);
        m_hands.tap(Qt::Key_Escape);
        QTRY_COMPARE(escapes, 1);
        QCOMPARE(m_presses, 0);
        escape.reset();
        m_hands.tap(Qt::Key_Escape);
        QTRY_COMPARE(m_presses, 1);
        QCOMPARE(escapes, 1);
    }

    void callbackMayUnbindItself()
    {
        m_whenPressed = [this] { QVERIFY(unbind()); };
        QVERIFY(bind(kKey9, kControlShift));
        m_hands.chord(kCombination);
        QTRY_COMPARE(m_presses, 1);
        m_hands.chord(kCombination);
        settle();
        QCOMPARE(m_presses, 1);
    }

    void ofTwoNamesForAKeyTheLastOneHears()
    {
        QVERIFY(refusedOf({{QStringLiteral("first"), {}, kKey9, kControlShift},
                           {QStringLiteral("last"), {}, kKey9, kControlShift}})
                    .isEmpty());
        m_hands.chord(kCombination);
        QTRY_COMPARE(m_presses, 1);
        QCOMPARE(m_heard, QStringLiteral("last"));
    }

    void nobodyIsCalledWhoseContextIsGone()
    {
        QVERIFY(bind(kKey9, kControlShift));
        m_context.reset();
        m_hands.chord(kCombination);
        settle();
        QCOMPARE(m_presses, 0);
    }

    void keysAreGrabbedAgainWhenTheModifiersMove()
    {
        const auto bits = x11::ModifierBits::read();
        QCOMPARE(bits.super, std::uint16_t(XCB_MOD_MASK_4));
        QVERIFY(bind(kKey9, commandModifier));
        QCOMPARE(QProcess::execute(QStringLiteral("xmodmap"),
                                   {QStringLiteral("-e"), QStringLiteral("clear mod3"),
                                    QStringLiteral("-e"), QStringLiteral("clear mod4"),
                                    QStringLiteral("-e"), QStringLiteral("add mod3 = Super_L")}),
                 0);
        settle();
        QCOMPARE(x11::ModifierBits::read().super, std::uint16_t(XCB_MOD_MASK_3));
        X11Rival other(display());
        QTRY_COMPARE(statesGrabbableBy(other, kKey9Code, XCB_MOD_MASK_3), 0);
        QVERIFY(statesGrabbableBy(other, kKey9Code, XCB_MOD_MASK_4) > 0);
        m_hands.chord({Qt::Key_Super_L, Qt::Key_9});
        QTRY_COMPARE(m_presses, 1);

        desktop::X11Hardware(display()).setKeyboard(QStringLiteral("us"));
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
        QVERIFY(bind(kKey9, kControlShift));
        const auto escape = m_hotKeys.takeKey(PlainKey::escape, [this] { ++m_presses; });
        QVERIFY(takesKeyboard(static_cast<xcb_window_t>(window.winId())));
        m_hands.chord(kCombination);
        QTRY_COMPARE(m_presses, 1);
        // This one was for the menu.
        m_hands.tap(Qt::Key_Escape);
        settle();
        QCOMPARE(m_presses, 1);
        xcb_ungrab_keyboard(x11::connection(), XCB_CURRENT_TIME);
        xcb_flush(x11::connection());
        m_hands.tap(Qt::Key_Escape);
        QTRY_COMPARE(m_presses, 2);
    }

    void windowThatKeepsKeysFromEverybodyKeepsThemFromUs()
    {
        QVERIFY(bind(kKey9, kControlShift));
        const xcb_window_t sink = xcb_generate_id(x11::connection());
        const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS};
        xcb_create_window(x11::connection(), XCB_COPY_FROM_PARENT, sink, x11::root(), -10, -10, 1,
                          1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(x11::connection(), sink);
        QVERIFY(takesKeyboard(sink));
        m_hands.chord(kCombination);
        settle();
        QCOMPARE(m_presses, 0);
        xcb_destroy_window(x11::connection(), sink);
        xcb_flush(x11::connection());
        m_hands.chord(kCombination);
        QTRY_COMPARE(m_presses, 1);
    }

    void keyThatAnotherProgramMadeUpDoesNotFire()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(bind(kKey9, kControlShift));
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
        const auto escape = m_hotKeys.takeKey(PlainKey::escape, [this] { ++m_presses; });
        QVERIFY(escape);
        QSignalSpy focusMoved(qGuiApp, &QGuiApplication::focusWindowChanged);
        m_hands.press(Qt::Key_Escape);
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(kPastRepeatMs);
        m_hands.release(Qt::Key_Escape);
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
