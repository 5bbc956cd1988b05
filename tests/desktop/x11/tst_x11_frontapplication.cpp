#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/X11FrontApplication.h"
#include "support/TestCase.h"
#include "x11/InputClient.h"

#include <QWidget>

namespace brindlecam {

using test::InputClient;
using test::settle;
using test::xdotool;

namespace {

constexpr int kHeldMs = 1100; ///< the server repeats after 660 ms

} // namespace

/// A window below, a session's window above it, and keys that are held while the session ends.
class TestX11FrontApplication final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();
    std::unique_ptr<QWidget> m_overlay;

    void openOverlay()
    {
        m_overlay = std::make_unique<QWidget>(nullptr, Qt::Window | Qt::BypassWindowManagerHint);
        m_overlay->setGeometry(0, 0, 300, 200);
        m_overlay->show();
        QVERIFY(x11::setFocus(static_cast<xcb_window_t>(m_overlay->winId())));
        QTRY_VERIFY(m_overlay->isActiveWindow());
    }

    /// Presses a key and lets the session hear of it.
    static void hold(const QString& key)
    {
        QVERIFY(xdotool(QStringLiteral("keydown ") + key));
        settle();
    }

    static void activated(InputClient& client)
    {
        client.activate();
        QTRY_VERIFY(client.hasFocus());
        settle();
    }

private Q_SLOTS:
    void cleanup()
    {
        m_overlay.reset();
        xdotool(QStringLiteral("keyup Return keyup a keyup shift"));
        settle();
    }

    void focusGoesBackAtOnceAndToNobodyElse()
    {
        X11FrontApplication front(m_events);
        InputClient below(QRect(100, 100, 200, 200));
        InputClient other(QRect(50, 50, 400, 400));
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
        InputClient below(QRect(100, 100, 200, 200));
        activated(below);
        front.remember();
        openOverlay();
        QVERIFY(xdotool(QStringLiteral("keydown shift")));
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
        InputClient below(QRect(100, 100, 200, 200));
        InputClient other(QRect(50, 50, 400, 400));
        activated(other);
        activated(below);
        front.remember();
        openOverlay();
        const int before = other.focusGains();
        hold(QStringLiteral("Return"));
        front.giveBack();
        m_overlay->hide();
        QTest::qWait(heldMs);
        QVERIFY(!below.hasFocus());
        QVERIFY(xdotool(QStringLiteral("keyup Return")));
        QTRY_VERIFY(below.hasFocus());
        QCOMPARE(below.keyEvents(), 0);
        QCOMPARE(other.keyEvents(), 0);
        QCOMPARE(other.focusGains(), before);
        QVERIFY(xdotool(QStringLiteral("key a")));
        QTRY_COMPARE(below.keyEvents(), 2);
    }

    void keyReleasedBeforeTheKeyboardIsTakenEndsTheWait()
    {
        X11FrontApplication front(m_events);
        InputClient below(QRect(100, 100, 200, 200));
        activated(below);
        front.remember();
        openOverlay();
        hold(QStringLiteral("Return"));
        front.giveBack();
        // Without the event loop in between.
        QVERIFY(xdotool(QStringLiteral("keyup Return")));
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
    }

    void keyHeldSinceBeforeTheSessionIsNotAwaited()
    {
        X11FrontApplication front(m_events);
        InputClient below(QRect(100, 100, 200, 200));
        activated(below);
        hold(QStringLiteral("a"));
        front.remember();
        openOverlay();
        QTest::qWait(kHeldMs); // its repeats reach the session
        front.giveBack();
        QVERIFY(below.canHaveKeyboard());
        m_overlay->hide();
        QTRY_VERIFY(below.hasFocus());
    }

    void keyHeldSinceBeforeTheSessionIsAwaitedOnceItWasPressedAgain()
    {
        X11FrontApplication front(m_events);
        InputClient below(QRect(100, 100, 200, 200));
        activated(below);
        hold(QStringLiteral("Return"));
        front.remember();
        openOverlay();
        QVERIFY(xdotool(QStringLiteral("keyup Return")));
        hold(QStringLiteral("Return"));
        const int before = below.keyEvents();
        front.giveBack();
        QVERIFY(!below.canHaveKeyboard());
        m_overlay->hide();
        QVERIFY(xdotool(QStringLiteral("keyup Return")));
        QTRY_VERIFY(below.hasFocus());
        QCOMPARE(below.keyEvents(), before);
    }

    void sessionThatBeginsWhileKeysAreHeldKeepsTheOlderWindow()
    {
        X11FrontApplication front(m_events);
        InputClient below(QRect(100, 100, 200, 200));
        activated(below);
        front.remember();
        openOverlay();
        hold(QStringLiteral("Return"));
        front.giveBack();
        m_overlay->hide();
        settle();
        front.remember();
        openOverlay();
        QVERIFY(xdotool(QStringLiteral("keyup Return")));
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
        InputClient other(QRect(50, 50, 400, 400));
        auto below = std::make_unique<InputClient>(QRect(100, 100, 200, 200));
        activated(*below);
        front.remember();
        openOverlay();
        below.reset();
        settle();
        front.giveBack();
        m_overlay->hide();
        settle();
        // Whoever gets it, keys must not be dead.
        QVERIFY(xdotool(QStringLiteral("mousemove 60 60")));
        QVERIFY(xdotool(QStringLiteral("key a")));
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
