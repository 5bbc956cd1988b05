#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11InputGrabs.h"
#include "support/TestCase.h"
#include "x11/InputClient.h"

#include <QWidget>

#include <array>

namespace brindlecam {

using test::InputClient;
using test::run;
using test::settle;
using Answer = InputGrabs::Answer;

namespace {

/// Takes pointer, keyboard or both for a client.
void grabPointer(InputClient& client)
{
    const x11::Owned<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        client.connection(),
        xcb_grab_pointer(client.connection(), 1, client.window(), XCB_EVENT_MASK_BUTTON_PRESS,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE,
                         XCB_CURRENT_TIME),
        nullptr));
    QVERIFY(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
}
void releasePointer(InputClient& client)
{
    xcb_ungrab_pointer(client.connection(), XCB_CURRENT_TIME);
    client.sync();
}
/// A menu of a client, as browsers make them.
xcb_window_t openMenu(InputClient& client)
{
    const xcb_window_t menu = xcb_generate_id(client.connection());
    const std::uint32_t overrides = 1;
    xcb_create_window(client.connection(), XCB_COPY_FROM_PARENT, menu, client.root(), 120, 120, 80,
                      60, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrides);
    const std::array<xcb_atom_t, 1> type{client.atom("_NET_WM_WINDOW_TYPE_MENU")};
    xcb_change_property(client.connection(), XCB_PROP_MODE_REPLACE, menu,
                        client.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, type.data());
    xcb_map_window(client.connection(), menu);
    client.sync();
    return menu;
}

} // namespace

class TestX11InputGrabs final : public test::TestCase {
    Q_OBJECT

private:
    std::unique_ptr<X11InputGrabs> m_grabs;
    std::optional<Answer> m_answer;
    QObject m_context;

    void clear()
    {
        m_grabs->clear(&m_context, [this](Answer answer) { m_answer = answer; });
    }
    static void activated(InputClient& client)
    {
        client.activate();
        QTRY_VERIFY(client.hasFocus());
        settle();
    }

private Q_SLOTS:
    void init()
    {
        m_grabs = std::make_unique<X11InputGrabs>();
        m_answer.reset();
    }

    void withoutAGrabItIsAnsweredAtOnceAndNobodyNotices()
    {
        InputClient below(QRect(100, 100, 200, 200));
        activated(below);
        const int before = below.focusGains();
        clear();
        QCOMPARE(m_answer, Answer::free);
        QCOMPARE(below.focusGains(), before);
    }

    /// As that of a hot key while it is down.
    void grabOfOurOwnIsNoneAndStays()
    {
        InputClient other(QRect(100, 100, 200, 200));
        activated(other);
        const x11::Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
            x11::connection(),
            xcb_grab_keyboard(x11::connection(), 0, x11::root(), XCB_CURRENT_TIME,
                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        QVERIFY(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
        clear();
        QCOMPARE(m_answer, Answer::free);
        QVERIFY(!other.canHaveKeyboard());
        xcb_ungrab_keyboard(x11::connection(), XCB_CURRENT_TIME);
        xcb_flush(x11::connection());
    }

    void grabThatEndsIsHeardOf()
    {
        InputClient other(QRect(100, 100, 200, 200));
        activated(other);
        grabPointer(other);
        clear();
        QVERIFY(!m_answer);
        releasePointer(other);
        QTRY_COMPARE(m_answer, Answer::free);
        QCOMPARE(other.keyEvents(), 0);
    }

    void contextThatHasGoneHearsNothing()
    {
        InputClient other(QRect(100, 100, 200, 200));
        activated(other);
        grabPointer(other);
        auto context = std::make_unique<QObject>();
        m_grabs->clear(context.get(), [this](Answer answer) { m_answer = answer; });
        context.reset();
        releasePointer(other);
        clear(); // the only one that is answered
        QCOMPARE(m_answer, Answer::free);
        m_answer.reset();
        settle();
        QVERIFY(!m_answer);
    }

    void escapeIsWhereTheKeyboardMapHasIt()
    {
        QCOMPARE(x11::escapeKey(), std::uint8_t(9));
        const auto setOption = [](const QString& option) {
            return run(QStringLiteral("setxkbmap"),
                       {QStringLiteral("us"), QStringLiteral("-option"), option});
        };
        QVERIFY(setOption(QStringLiteral("caps:swapescape")));
        constexpr std::uint8_t kCapsLock = 66;
        QCOMPARE(x11::escapeKey(), kCapsLock);
        QVERIFY(setOption(QString()));
        QCOMPARE(x11::escapeKey(), std::uint8_t(9));
        settle();
    }

    /// Menus of browsers take the pointer only: Escape reaches them through the focus.
    void menuWithoutTheKeyboardIsClosedThroughTheFocus()
    {
        InputClient browser(QRect(100, 100, 200, 200));
        activated(browser);
        const xcb_window_t menu = openMenu(browser);
        grabPointer(browser);
        const int before = browser.keyEvents();
        clear();
        QTRY_COMPARE(browser.keyEvents(), before + 2);
        QVERIFY(!m_answer);
        xcb_destroy_window(browser.connection(), menu);
        releasePointer(browser);
        QTRY_COMPARE(m_answer, Answer::free);
        QCOMPARE(browser.keyEvents(), before + 2);
    }

    void keyThatWouldReachAnotherProgramIsNotPressed()
    {
        InputClient browser(QRect(100, 100, 200, 200));
        activated(browser);
        openMenu(browser);
        InputClient other(QRect(400, 300, 200, 200));
        activated(other);
        grabPointer(browser);
        const int before = other.keyEvents();
        clear();
        QTRY_COMPARE(m_answer, Answer::taken);
        QCOMPARE(other.keyEvents(), before);
        QCOMPARE(browser.keyEvents(), 0);
        releasePointer(browser);
    }
};

BRINDLECAM_TEST(TestX11InputGrabs);

} // namespace brindlecam

#include "tst_x11_inputgrabs.moc"
