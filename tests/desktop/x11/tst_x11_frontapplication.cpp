// Covers KeySink.
#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11Input.h"
#include "desktop/support/x11/X11Rival.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11FrontApplication.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

#include <QWidget>

namespace brindlecam {

using desktop::X11ClientWindow;
using desktop::X11Rival;
using test::activate;
using test::display;
using test::settle;

namespace {

constexpr int kHeldMs = 1100; ///< the server repeats after 660 ms

} // namespace

/// A window below, a session's window above it, and keys that are held while the session ends.
class TestX11FrontApplication final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();
    std::unique_ptr<QWidget> m_overlay;
    desktop::X11Input m_hands{display()};

    void openOverlay()
    {
        m_overlay = std::make_unique<QWidget>(nullptr, Qt::Window | Qt::BypassWindowManagerHint);
        m_overlay->setGeometry(0, 0, 300, 200);
        m_overlay->show();
        QVERIFY(x11::setFocus(static_cast<xcb_window_t>(m_overlay->winId())));
        QTRY_VERIFY(m_overlay->isActiveWindow());
    }

    /// Presses a key and lets the session hear of it.
    void hold(Qt::Key key)
    {
        m_hands.press(key);
        settle();
    }

    static void activated(X11ClientWindow& client)
    {
        activate(client);
        QTRY_VERIFY(client.hasFocus());
        settle();
    }

private Q_SLOTS:
    void cleanup()
    {
        m_overlay.reset();
        m_hands.letGo();
        settle();
    }

    void focusGoesBackAtOnceAndToNobodyElse()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        X11ClientWindow other(display(), {.pixels = QRect(50, 50, 400, 400)});
        activated(other);
        activated(below);
        front.remember();
        openOverlay();
        const int before = other.focusGains();
        front.giveBack();
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
        settle();
        QVERIFY(below.hasFocus());
        QCOMPARE(other.focusGains(), before);
    }

    void heldModifierDoesNotDelayTheGivingBack()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(below);
        front.remember();
        openOverlay();
        m_hands.press(Qt::Key_Shift);
        front.giveBack();
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
    }

    void heldKeyNeverReachesTheWindowBelow_data()
    {
        QTest::addColumn<int>("heldMs");
        QTest::newRow("a tap") << 50;
        QTest::newRow("repeating") << 900;
        QTest::newRow("past the safety check") << 2300;
    }
    void heldKeyNeverReachesTheWindowBelow()
    {
        QFETCH(int, heldMs);
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        X11ClientWindow other(display(), {.pixels = QRect(50, 50, 400, 400)});
        activated(other);
        activated(below);
        front.remember();
        openOverlay();
        const int before = other.focusGains();
        hold(Qt::Key_Return);
        front.giveBack();
        m_overlay->hide();
        QTest::qWait(heldMs);
        QVERIFY(!below.hasFocus());
        m_hands.release(Qt::Key_Return);
        QTRY_VERIFY(below.hasFocus());
        QCOMPARE(below.keyEvents(), 0);
        QCOMPARE(other.keyEvents(), 0);
        QCOMPARE(other.focusGains(), before);
        m_hands.tap(Qt::Key_A);
        QTRY_COMPARE(below.keyEvents(), 2);
    }

    void keyReleasedBeforeTheKeyboardIsTakenEndsTheWait()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(below);
        front.remember();
        openOverlay();
        hold(Qt::Key_Return);
        front.giveBack();
        // Without the event loop in between.
        m_hands.release(Qt::Key_Return);
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
    }

    void keyHeldSinceBeforeTheSessionIsNotAwaited()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(below);
        hold(Qt::Key_A);
        front.remember();
        openOverlay();
        QTest::qWait(kHeldMs); // its repeats reach the session
        front.giveBack();
        QVERIFY(!X11Rival(display()).isKeyboardTaken());
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
    }

    void keyHeldSinceBeforeTheSessionIsAwaitedOnceItWasPressedAgain()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(below);
        hold(Qt::Key_Return);
        front.remember();
        openOverlay();
        m_hands.release(Qt::Key_Return);
        hold(Qt::Key_Return);
        const int before = below.keyEvents();
        front.giveBack();
        QVERIFY(X11Rival(display()).isKeyboardTaken());
        m_overlay->hide();
        m_hands.release(Qt::Key_Return);
        QTRY_VERIFY(below.hasFocus());
        QCOMPARE(below.keyEvents(), before);
    }

    void sessionThatBeginsWhileKeysAreHeldKeepsTheOlderWindow()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 200, 200)});
        activated(below);
        front.remember();
        openOverlay();
        hold(Qt::Key_Return);
        front.giveBack();
        m_overlay->hide();
        settle();
        front.remember();
        openOverlay();
        m_hands.release(Qt::Key_Return);
        settle();
        QVERIFY(m_overlay->isActiveWindow());
        QVERIFY(!below.hasFocus());
        front.giveBack();
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
    }

    void rememberedWindowThatIsGoneIsForgotten()
    {
        X11FrontApplication front(m_events);
        X11ClientWindow other(display(), {.pixels = QRect(50, 50, 400, 400)});
        auto below = std::make_unique<X11ClientWindow>(
            display(), desktop::ClientWindowOptions{.pixels = QRect(100, 100, 200, 200)});
        activated(*below);
        front.remember();
        openOverlay();
        below.reset();
        settle();
        front.giveBack();
        m_overlay->hide();
        settle();
        // Whoever gets it, keys must not be dead.
        m_hands.moveTo({60, 60});
        m_hands.tap(Qt::Key_A);
        QTRY_COMPARE(other.keyEvents(), 2);
    }

    void nothingIsGivenBackThatWasNotRemembered()
    {
        X11FrontApplication front(m_events);
        openOverlay();
        front.giveBack();
        settle();
        QVERIFY(m_overlay->isActiveWindow());
    }
};

BRINDLECAM_TEST(TestX11FrontApplication);

} // namespace brindlecam

#include "tst_x11_frontapplication.moc"
