// Covers WindowStack.
#include "desktop/support/x11/X11Holdings.h"
#include "platform/x11/connection/X11Windows.h"
#include "x11/ports/BeneathTest.h"
#include "x11/ports/Frames.h"

#include <QCoreApplication>

#include <xcb/composite.h>

namespace brindlecam {

using test::nextImage;
using test::openFrames;
using test::Page;
using test::PageOptions;

namespace {

/// Whether the server keeps pixels for the window alone.
bool isRedirected(const Page& page)
{
    auto* const raw = page.connection().raw();
    const desktop::Owned<xcb_composite_query_version_reply_t> version(
        xcb_composite_query_version_reply(raw, xcb_composite_query_version(raw, 0, 4), nullptr));
    const xcb_pixmap_t pixmap = xcb_generate_id(raw);
    const desktop::Owned<xcb_generic_error_t> error(
        xcb_request_check(raw, xcb_composite_name_window_pixmap_checked(raw, page.id(), pixmap)));
    if (!error)
        xcb_free_pixmap(raw, pixmap);
    return !error;
}

} // namespace

/// What lies beneath the program's own panels while windows, panels and compositors come and go.
class TestRegionStack final : public test::BeneathTest {
    Q_OBJECT

private Q_SLOTS:
    void stackMayChangeMeanwhile_data() { desktops(); }
    void stackMayChangeMeanwhile()
    {
        if (!begin())
            return;
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        Page first({.rect = {250, 300, 400, 380}, .kind = 1});
        QVERIFY(showsBeneath(*frames, {&first}));
        std::optional<Page> second(std::in_place,
                                   PageOptions{.rect = {600, 500, 420, 190}, .kind = 2});
        QVERIFY(showsBeneath(*frames, {&first, &*second}));
        first.raise();
        x11::raise(panelId());
        QVERIFY(x11::isViewable(panelId())); // the server is through with it
        QVERIFY(showsBeneath(*frames, {&*second, &first}));
        first.place({300, 320, 400, 380}); // moved
        QVERIFY(showsBeneath(*frames, {&*second, &first}));
        first.place({300, 320, 500, 330}); // another size
        QVERIFY(showsBeneath(*frames, {&*second, &first}));
        first.scrollTo(11);
        second->scrollTo(13);
        QVERIFY(showsBeneath(*frames, {&*second, &first}));
        second.reset();
        QVERIFY(showsBeneath(*frames, {&first}));
        first.place({100, 10, 80, 60}); // elsewhere
        QVERIFY(showsBeneath(*frames, {&first}));
    }

    void panelMayComeMoveAndGo_data() { desktops(); }
    void panelMayComeMoveAndGo()
    {
        if (!begin())
            return;
        Page page({.rect = kPage});
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        QVERIFY(showsBeneath(*frames, {&page}));
        showPanel();
        page.scrollTo(5);
        QVERIFY(showsAtOnce(*frames, {&page}));
        m_panels.place(*m_panel, kPanel.translated(-40, -300));
        QTRY_COMPARE(x11::rectOnRoot(panelId()), kPanel.translated(-40, -300));
        page.scrollTo(9);
        QVERIFY(showsAtOnce(*frames, {&page}));
        m_panel.reset();
        QVERIFY(showsBeneath(*frames, {&page}));
    }

    void compositorMayComeAndGo()
    {
        if (!canComposite())
            QSKIP("no compositor can run");
        Page page({.rect = kPage});
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        int row = 0;
        for (int round = 0; round < 2; ++round) {
            m_compositor.emplace();
            page.scrollTo(++row);
            QVERIFY(showsAtOnce(*frames, {&page}));
            m_compositor.reset();
            QTRY_VERIFY(!test::Compositor::runs());
            page.scrollTo(++row);
            QVERIFY(showsAtOnce(*frames, {&page}));
        }
    }

    void programsPaintAnewWhatWasCoveredBefore_data() { desktops(); }
    void programsPaintAnewWhatWasCoveredBefore()
    {
        if (!begin())
            return;
        Page page({.rect = kPage, .repaints = true});
        showPanel();
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        QVERIFY(showsBeneath(*frames, {&page}));
        QVERIFY(isPanelOnTheScreen({&page}));
    }

    void windowsAreTheirScreensAgainAfterwards()
    {
        if (!hasComposite())
            QSKIP("panels can't be left out");
        const Page page({.rect = kPage});
        QVERIFY(!isRedirected(page));
        auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        QVERIFY(!nextImage(*frames).isNull());
        QVERIFY(isRedirected(page));
        frames.reset();
        QTRY_VERIFY(!isRedirected(page));
        QVERIFY(nextImage(*openFrames(kRegion)) == stacked({&page}).copy(kRegion));
    }

    void nobodyHearsOfFramesWhileNothingChanges()
    {
        if (!hasComposite())
            QSKIP("panels can't be left out");
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel(); // over the bare desktop
        QVERIFY(showsAtOnce(*frames, {}));
        const desktop::Connection others(test::display());
        const std::uint32_t events[] = {XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
        xcb_change_window_attributes(others.raw(), others.root(), XCB_CW_EVENT_MASK, events);
        others.sync();
        for (int frame = 0; frame < 3; ++frame)
            QVERIFY(showsAtOnce(*frames, {}));
        others.sync();
        const desktop::Owned<xcb_generic_event_t> event(xcb_poll_for_event(others.raw()));
        QVERIFY(!event);
    }

    void nothingIsLeftInTheServerOverManyChanges()
    {
        if (!hasComposite())
            QSKIP("panels can't be left out");
        Page page({.rect = kPage});
        Page other({.rect = {300, 640, 100, 100}});
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        const desktop::Connection connection(test::display());
        std::optional<desktop::Holdings> first;
        for (int change = 0; change < 40; ++change) {
            other.place({300 + change, 640, 100, 100 + change % 3});
            QVERIFY(!nextImage(*frames).isNull());
            const auto now = desktop::holdingsOf(connection, QCoreApplication::applicationPid());
            if (!first)
                first = now;
            QCOMPARE(now.pictures, first->pictures);
            QCOMPARE(now.windows, first->windows);
            QCOMPARE(now.others, first->others);
        }
    }
};

BRINDLECAM_TEST(TestRegionStack);

} // namespace brindlecam

#include "tst_region_stack.moc"
