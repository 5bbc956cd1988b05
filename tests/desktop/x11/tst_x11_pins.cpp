// Covers BackingRoom, QtOnX11, WindowHints, X11Pin, X11Windows.
#include "desktop/support/x11/SelectionReader.h"
#include "desktop/support/x11/X11Input.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/CompositorWatch.h"
#include "platform/x11/windows/PanelWindows.h"
#include "platform/x11/windows/QtOnX11.h"
#include "platform/x11/windows/X11Panels.h"
#include "platform/x11/windows/X11Pins.h"
#include "support/TestCase.h"
#include "x11/ManagerByHand.h"
#include "x11/ThisDesktop.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <xcb/shape.h>

#include <algorithm>

namespace brindlecam {

using test::display;
using test::settle;
using x11::idOf;

namespace {

constexpr qreal kScale = 1.5;
constexpr qreal kRadius = 6; // points
/// Whole points, too: of other sizes Qt has an idea of its own, which a busy window manager may
/// carry out after ours.
constexpr QRect kPlace(102, 123, 300, 210);
constexpr int kPatience = 15000; // milliseconds; a busy window manager once took five seconds

/// A pin that notes what its hand does.
class Pinned final : public QWidget {
public:
    explicit Pinned(Pins& pins)
        : surface(pins.make(*this, kRadius, [this] { ++changes; }))
    {
    }

    int changes = 0;
    QPoint gripped;
    QPoint hand;
    std::unique_ptr<PinSurface> surface;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        surface->grip();
        gripped = surface->onDesktop(event->scenePosition());
    }
    void mouseMoveEvent(QMouseEvent* event) override { hand = surface->hand(*event); }
};

QRect placeOf(const QWidget& widget)
{
    return x11::rectOnRoot(idOf(widget)).value_or(QRect());
}

/// Whether it comes there, and stays.
bool comesTo(const Pinned& pin, const QRect& place)
{
    if (!QTest::qWaitFor([&] { return placeOf(pin) == place; }, kPatience))
        return false;
    settle();
    return placeOf(pin) == place;
}

std::vector<std::uint32_t> atoms(const QWidget& widget, const char* property)
{
    return x11::property32(idOf(widget), x11::atom(property), XCB_ATOM_ATOM);
}

/// Whether the server has cut the window to a shape, and how large what is left of it is.
struct Cut {
    bool is = false;
    QSize left;
};
Cut cutOf(const QWidget& widget)
{
    const x11::Owned<xcb_shape_query_extents_reply_t> reply(xcb_shape_query_extents_reply(
        x11::connection(), xcb_shape_query_extents(x11::connection(), idOf(widget)), nullptr));
    if (!reply)
        return {};
    return {reply->bounding_shaped != 0,
            QSize(reply->bounding_shape_extents_width, reply->bounding_shape_extents_height)};
}

} // namespace

class TestX11Pins final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<PanelWindows> m_windows =
        std::make_shared<PanelWindows>(std::make_shared<X11Events>());
    X11Pins m_pins{m_windows, std::make_shared<CompositorWatch>()};
    X11Panels m_panels{m_windows, std::make_shared<ServerPixels>()};
    desktop::X11Input m_hands{display()};

private Q_SLOTS:
    void cleanup() { settle(); }

    void pinLiesAboveOnEveryDesktop()
    {
        Pinned pin(m_pins);
        const QRect place(101, 123, 307, 211);
        for (int round = 0; round < 2; ++round) {
            pin.surface->show({place, kScale});
            QVERIFY(QTest::qWaitForWindowExposed(&pin));
            settle();
            QCOMPARE(atoms(pin, "_NET_WM_WINDOW_TYPE"),
                     std::vector<std::uint32_t>{x11::atom("_NET_WM_WINDOW_TYPE_UTILITY")});
            const auto states = atoms(pin, "_NET_WM_STATE");
            for (const char* state :
                 {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
                QVERIFY2(std::ranges::find(states, x11::atom(state)) != states.end(), state);
            // Openbox says it this way and takes the sticky state away.
            QCOMPARE(x11::property32(idOf(pin), x11::atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL),
                     std::vector<std::uint32_t>{0xffffffff});
            QVERIFY(comesTo(pin, place));
            QCOMPARE(pin.surface->rect(), place);
            QVERIFY(!pin.isActiveWindow());
            pin.hide();
            settle();
        }
    }

    // Where it belongs it may be before it is mapped, which is when it comes into the frame.
    void pinGoesWhereItBelongsAfterItsFrameCameElsewhere()
    {
        if (x11::hasWindowManager())
            QSKIP("another window manager is there");
        test::ManagerByHand manager;
        QVERIFY(manager.manages());
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        const auto isPlaced = [&manager, window = idOf(pin)] {
            manager.placeAsAsked();
            return x11::rectOnRoot(window) == kPlace;
        };
        QTRY_VERIFY(isPlaced());
        QTRY_VERIFY(manager.isAskedToMap());
        settle();
        manager.frame(QRect(QPoint(), kPlace.size() + QSize(1, 1)));
        QCOMPARE(pin.surface->rect(), kPlace); // nobody has moved it, it has not arrived yet
        QTRY_VERIFY(isPlaced());
        settle();
        QVERIFY(isPlaced());
        QCOMPARE(pin.surface->rect(), kPlace);
    }

    void pinIsMovedAndResizedByThePixel()
    {
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        QVERIFY(comesTo(pin, kPlace));
        const QRect next(57, 33, 401, 281);
        pin.surface->place({next, kScale});
        QCOMPARE(pin.surface->rect(), next); // before a window manager has agreed
        QVERIFY(comesTo(pin, next));
        QTRY_COMPARE(pin.surface->pixels(), next.size()); // which are no whole points
    }

    void windowIsCutByThePixelWhereNothingBlends()
    {
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        QVERIFY(!pin.surface->blends());
        QTRY_VERIFY(cutOf(pin).is);
        QTRY_COMPARE(cutOf(pin).left, kPlace.size());
        pin.surface->place({QRect(101, 123, 401, 281), kScale});
        QTRY_COMPARE(cutOf(pin).left, QSize(401, 281));
        pin.surface->place({QRect(101, 123, 151, 107), kScale});
        QTRY_COMPARE(cutOf(pin).left, QSize(151, 107));
    }

    void pinIsWholeWithACompositorAndCutWhenThatIsGone()
    {
        auto compositor = std::make_unique<desktop::SelectionReader>(display());
        QVERIFY(compositor->own("_NET_WM_CM_S0"));
        settle();
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        QVERIFY(comesTo(pin, kPlace));
        QVERIFY(pin.surface->blends());
        QVERIFY(!cutOf(pin).is);
        compositor.reset();
        QTRY_COMPARE(pin.changes, 1);
        QVERIFY(!pin.surface->blends());
        QVERIFY(cutOf(pin).is);
        QCOMPARE(cutOf(pin).left, kPlace.size());
    }

    void pinMadeWithoutACompositorStaysCutWhenOneComes()
    {
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        QTRY_VERIFY(cutOf(pin).is);
        desktop::SelectionReader compositor(display());
        QVERIFY(compositor.own("_NET_WM_CM_S0"));
        QTRY_COMPARE(pin.changes, 1);
        QVERIFY(!pin.surface->blends());
        QVERIFY(cutOf(pin).is);
    }

    void handIsKnownByThePixelAndBringsTheFocus()
    {
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        QVERIFY(comesTo(pin, kPlace));
        QTRY_VERIFY(pin.windowHandle()->isExposed());
        const QPoint from(150, 161);
        m_hands.moveTo(from);
        m_hands.press(desktop::Button::left);
        QTRY_COMPARE(pin.gripped, from);
        QTRY_VERIFY(pin.isActiveWindow());
        for (const QPoint way : {QPoint(1, 0), QPoint(8, 5), QPoint(20, 13)}) {
            m_hands.moveTo(from + way);
            QTRY_COMPARE(pin.hand, from + way); // which are no whole points
        }
        m_hands.release(desktop::Button::left);
    }

    void pinComesUnderTheHandWithoutASecondPressReachingIt()
    {
        QWidget panel;
        m_panels.assume(panel, PanelRole::sessionPanel, {});
        m_panels.show(panel, QRect(100, 100, 300, 200));
        QTRY_VERIFY(panel.windowHandle()->isExposed());
        m_hands.click({200, 200});
        QTRY_VERIFY(m_windows->events()->sinceClick());
        m_panels.swallowDoubleClick();
        panel.hide();
        Pinned pin(m_pins);
        pin.surface->show({kPlace, kScale});
        // Before the server has told of anything.
        const x11::Owned<xcb_query_pointer_reply_t> under(xcb_query_pointer_reply(
            x11::connection(), xcb_query_pointer(x11::connection(), x11::root()), nullptr));
        QVERIFY(under);
        QVERIFY(under->child != XCB_WINDOW_NONE);
        QVERIFY(under->child != idOf(pin));
    }

    void pinsMayComeAndGo()
    {
        auto first = std::make_unique<Pinned>(m_pins);
        first->surface->show({QRect(10, 10, 100, 50), kScale});
        auto second = std::make_unique<Pinned>(m_pins);
        second->surface->show({QRect(60, 30, 100, 50), kScale});
        first.reset();
        settle();
        QVERIFY(comesTo(*second, QRect(60, 30, 100, 50)));
        second.reset();
        settle();
        Pinned third(m_pins);
        third.surface->show({QRect(10, 10, 100, 50), kScale});
        QVERIFY(comesTo(third, QRect(10, 10, 100, 50)));
    }
};

BRINDLECAM_TEST(TestX11Pins);

} // namespace brindlecam

#include "tst_x11_pins.moc"
