#include "desktop/support/x11/X11ClientWindow.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/windows/FullScreenWatch.h"
#include "support/TestCase.h"
#include "x11/ThisDesktop.h"

namespace brindlecam {

using desktop::X11ClientWindow;
using test::activate;
using test::display;
using test::settle;

/// What the watch listens to, seen by the server.
class TestX11FullScreenWatch final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();

    static std::uint32_t listensTo(xcb_window_t window)
    {
        const x11::Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
            x11::connection(), xcb_get_window_attributes(x11::connection(), window), nullptr));
        return reply ? reply->your_event_mask : 0;
    }
    static void callActive(xcb_window_t window)
    {
        x11::setProperty32(x11::root(), x11::atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, {window});
        settle();
    }

private Q_SLOTS:
    /// Some window managers name the root while no window is active.
    void listeningToTheRootStaysAsItIsWhenThatIsActive()
    {
        const std::uint32_t before = listensTo(x11::root());
        QVERIFY(before & XCB_EVENT_MASK_PROPERTY_CHANGE);
        X11ClientWindow other(display(), {.pixels = QRect(100, 100, 200, 200)});
        activate(other);
        settle();
        int looks = 0;
        FullScreenWatch watch(m_events,
                              {.isHeld = [] { return false; }, .looked = [&looks] { ++looks; }});
        callActive(x11::root());
        QTRY_VERIFY(looks > 0);
        QCOMPARE(listensTo(x11::root()), before);
        looks = 0;
        callActive(static_cast<xcb_window_t>(other.id()));
        QTRY_VERIFY(looks > 0);
        QVERIFY(listensTo(static_cast<xcb_window_t>(other.id())) & XCB_EVENT_MASK_PROPERTY_CHANGE);
        QCOMPARE(listensTo(x11::root()), before);
    }
};

BRINDLECAM_TEST(TestX11FullScreenWatch);

} // namespace brindlecam

#include "tst_x11_fullscreenwatch.moc"
