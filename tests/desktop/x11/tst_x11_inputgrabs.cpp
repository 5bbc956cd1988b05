// Covers ForeignGrabs.
#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11Hardware.h"
#include "desktop/support/x11/X11Rival.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11InputGrabs.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

#include <QWidget>

#include <array>

namespace brindlecam {

using desktop::X11ClientWindow;
using desktop::X11Rival;
using test::activate;
using test::display;
using test::settle;
using Answer = InputGrabs::Answer;

namespace {

/// A menu of another program, as browsers make them.
xcb_window_t openMenu(const desktop::Connection& client)
{
    const xcb_window_t menu = xcb_generate_id(client.raw());
    const std::uint32_t overrides = 1;
    xcb_create_window(client.raw(), XCB_COPY_FROM_PARENT, menu, client.root(), 120, 120, 80, 60, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &overrides);
    const std::array<xcb_atom_t, 1> type{client.atom("_NET_WM_WINDOW_TYPE_MENU")};
    xcb_change_property(client.raw(), XCB_PROP_MODE_REPLACE, menu,
                        client.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, type.data());
    xcb_map_window(client.raw(), menu);
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
    static void activated(X11ClientWindow& client)
    {
        activate(client);
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
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(below);
        const int before = below.focusGains();
        clear();
        QCOMPARE(m_answer, Answer::free);
        QCOMPARE(below.focusGains(), before);
    }

    /// As that of a hot key while it is down.
    void grabOfOurOwnIsNoneAndStays()
    {
        X11ClientWindow other(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(other);
        const x11::Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
            x11::connection(),
            xcb_grab_keyboard(x11::connection(), 0, x11::root(), XCB_CURRENT_TIME,
                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        QVERIFY(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
        clear();
        QCOMPARE(m_answer, Answer::free);
        QVERIFY(X11Rival(display()).isKeyboardTaken());
        xcb_ungrab_keyboard(x11::connection(), XCB_CURRENT_TIME);
        xcb_flush(x11::connection());
    }

    void grabThatEndsIsHeardOf()
    {
        X11ClientWindow other(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(other);
        X11Rival rival(display());
        QVERIFY(rival.takePointer());
        clear();
        QVERIFY(!m_answer);
        rival.giveBackKeyboardAndPointer();
        QTRY_COMPARE(m_answer, Answer::free);
        QCOMPARE(other.keyEvents(), 0);
    }

    void contextThatHasGoneHearsNothing()
    {
        X11ClientWindow other(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(other);
        X11Rival rival(display());
        QVERIFY(rival.takePointer());
        auto context = std::make_unique<QObject>();
        m_grabs->clear(context.get(), [this](Answer answer) { m_answer = answer; });
        context.reset();
        rival.giveBackKeyboardAndPointer();
        clear(); // the only one that is answered
        QCOMPARE(m_answer, Answer::free);
        m_answer.reset();
        settle();
        QVERIFY(!m_answer);
    }

    void escapeIsWhereTheKeyboardMapHasIt()
    {
        QCOMPARE(x11::escapeKey(), std::uint8_t(9));
        const desktop::X11Hardware hardware(display());
        hardware.setKeyboard(QStringLiteral("us"), QStringLiteral("caps:swapescape"));
        constexpr std::uint8_t kCapsLock = 66;
        QCOMPARE(x11::escapeKey(), kCapsLock);
        hardware.setKeyboard(QStringLiteral("us"));
        QCOMPARE(x11::escapeKey(), std::uint8_t(9));
        settle();
    }

    /// Menus of browsers take the pointer only: Escape reaches them through the focus.
    void menuWithoutTheKeyboardIsClosedThroughTheFocus()
    {
        X11ClientWindow browser(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(browser);
        const xcb_window_t menu = openMenu(browser.connection());
        X11Rival rival(display());
        QVERIFY(rival.takePointer());
        const int before = browser.keyEvents();
        clear();
        QTRY_COMPARE(browser.keyEvents(), before + 2);
        QVERIFY(!m_answer);
        xcb_destroy_window(browser.connection().raw(), menu);
        rival.giveBackKeyboardAndPointer();
        QTRY_COMPARE(m_answer, Answer::free);
        QCOMPARE(browser.keyEvents(), before + 2);
    }

    void keyThatWouldReachAnotherProgramIsNotPressed()
    {
        X11ClientWindow browser(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(browser);
        openMenu(browser.connection());
        X11ClientWindow other(display(), {.pixels = QRect(400, 300, 200, 200)});
        activated(other);
        X11Rival rival(display());
        QVERIFY(rival.takePointer());
        const int before = other.keyEvents();
        clear();
        QTRY_COMPARE(m_answer, Answer::taken);
        QCOMPARE(other.keyEvents(), before);
        QCOMPARE(browser.keyEvents(), 0);
        rival.giveBackKeyboardAndPointer();
    }
};

BRINDLECAM_TEST(TestX11InputGrabs);

} // namespace brindlecam

#include "tst_x11_inputgrabs.moc"
