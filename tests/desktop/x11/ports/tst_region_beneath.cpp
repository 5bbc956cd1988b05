// Covers BeneathPanels, ClientArea, PictureFormats, RootBackground.
#include "x11/ports/BeneathTest.h"
#include "x11/ports/Frames.h"

#include <QPainter>
#include <QScopeGuard>

namespace brindlecam {

using test::nextImage;
using test::openFrames;
using test::Page;
using Alpha = test::PageOptions::Alpha;

/// Frames of what lies beneath the program's own panels.
class TestRegionBeneath final : public test::BeneathTest {
    Q_OBJECT

private Q_SLOTS:
    void withoutTheExtensionsFramesSaySo()
    {
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        QCOMPARE(frames->seesBeneathPanels(), hasComposite());
        const auto next = test::awaitNext(*frames);
        QVERIFY(next && next.value());
        QCOMPARE(next.value()->showsPanels, !hasComposite());
        QCOMPARE(next.value()->image, m_pattern.copy(kRegion));
    }

    void nobodyWhoWantsPanelsIsToldOfThem()
    {
        const auto frames = openFrames(kRegion);
        QVERIFY(frames);
        QVERIFY(!frames->seesBeneathPanels());
        showPanel();
        const auto next = test::awaitNext(*frames);
        QVERIFY(next && next.value() && !next.value()->showsPanels);
        QVERIFY(next.value()->image != m_pattern.copy(kRegion));
    }

    void pageIsWholeWhileItScrolls_data() { desktops(); }
    void pageIsWholeWhileItScrolls()
    {
        if (!begin())
            return;
        Page page({.rect = kPage, .managed = true});
        QTRY_VERIFY(page.rect().contains(kRegion));
        page.scrollTo(0);
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        for (int frame = 0; frame < kFrames; ++frame) {
            page.scrollTo(7 * frame);
            QVERIFY2(showsAtOnce(*frames, {&page}), qPrintable(QString::number(frame)));
        }
        QVERIFY(isPanelOnTheScreen({&page}));
    }

    void twoPagesAreWholeWhereTheyOverlap_data() { desktops(); }
    void twoPagesAreWholeWhereTheyOverlap()
    {
        if (!begin())
            return;
        Page lower({.rect = kPage, .kind = 1});
        Page upper({.rect = {500, 640, 300, 200}, .kind = 2}); // its upper edge runs through
        lower.scrollTo(0);
        upper.scrollTo(0);
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        for (int frame = 0; frame < kFrames; ++frame) {
            lower.scrollTo(5 * frame);
            upper.scrollTo(3 * frame);
            QVERIFY2(showsAtOnce(*frames, {&lower, &upper}), qPrintable(QString::number(frame)));
        }
        QVERIFY(isPanelOnTheScreen({&lower, &upper}));
    }

    void bareDesktopIsSeen_data() { desktops(); }
    void bareDesktopIsSeen()
    {
        if (!begin())
            return;
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        QVERIFY(showsBeneath(*frames, {}));
        QVERIFY(showsAtOnce(*frames, {}));
    }

    void colourOfTheDesktopIsSeenUnlessACompositorHidesIt_data() { desktops(); }
    void colourOfTheDesktopIsSeenUnlessACompositorHidesIt()
    {
        if (!begin())
            return;
        m_client->remove(m_client->root(), "_XROOTPMAP_ID");
        paintDesktop(isDepth16() ? 0x7e0 : 0xff00);
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        const auto next = test::awaitNext(*frames);
        const auto restore = qScopeGuard([this] { m_client->paintDesktop(m_pattern); });
        QVERIFY(next && next.value());
        QCOMPARE(next.value()->showsPanels, m_compositor.has_value());
        if (m_compositor)
            return;
        QImage green(kRegion.size(), QImage::Format_RGB32);
        green.fill(0xff00ff00);
        QCOMPARE(next.value()->image, green);
    }

    void windowAboveThePanelIsInThePicture_data() { desktops(); }
    void windowAboveThePanelIsInThePicture()
    {
        if (!begin())
            return;
        Page page({.rect = kPage, .kind = 1});
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        Page above({.rect = {700, 600, 350, 70}, .kind = 2});
        QVERIFY(showsAtOnce(*frames, {&page, &above}));
        above.scrollTo(9);
        QVERIFY(showsAtOnce(*frames, {&page, &above}));
        QVERIFY(isPanelOnTheScreen({&page, &above}));
    }

    void oddWindowsAreSeenAsTheScreenShowsThem_data()
    {
        QTest::addColumn<bool>("composited");
        QTest::addColumn<bool>("blends");
        QTest::addColumn<int>("border");
        QTest::addColumn<QRect>("hole");
        for (const bool composited : {false, true}) {
            const auto row = [composited](const char* what) -> QTestData& {
                return QTest::addRow("%s, %s", what, composited ? "composited" : "bare")
                       << composited;
            };
            row("half transparent") << true << 0 << QRect();
            row("with a border") << false << 7 << QRect();
            row("half transparent with a border") << true << 5 << QRect();
            row("with a hole") << false << 0 << QRect(20, 20, 200, 100);
        }
    }
    void oddWindowsAreSeenAsTheScreenShowsThem()
    {
        QFETCH(bool, blends);
        QFETCH(int, border);
        QFETCH(QRect, hole);
        if (!begin())
            return;
        if (blends && isDepth16())
            QSKIP("the screen's own colours are not exact");
        Page page({.rect = kPage, .kind = 1});
        Page odd({.rect = {400, 630, 300, 150},
                  .border = border,
                  .alpha = blends ? Alpha::half : Alpha::none,
                  .kind = 2});
        if (!hole.isNull())
            odd.cutOut(hole);
        page.scrollTo(17);
        odd.scrollTo(3);
        const auto frames = openFrames(kRegion, kWithout);
        const auto plain = openFrames(kRegion);
        QVERIFY(frames && plain);
        page.scrollTo(23); // what had been covered until then, too
        QImage expected = stacked({&page});
        QPainter painter(&expected);
        painter.setClipRegion(QRegion(expected.rect()) - hole.translated(odd.rect().topLeft()));
        painter.fillRect(odd.rect().adjusted(-border, -border, border, border), Page::kBorder);
        painter.setClipRegion(QRegion(odd.rect()) - hole.translated(odd.rect().topLeft()));
        painter.drawImage(kPage.topLeft(), page.image());
        // The server alone takes no notice of an alpha channel.
        const QImage own = odd.image();
        painter.drawImage(odd.rect().topLeft(),
                          m_compositor ? own
                                       : QImage(own.constBits(), own.width(), own.height(),
                                                own.bytesPerLine(), QImage::Format_RGB32));
        painter.end();
        expected = expected.copy(kRegion);
        QTRY_VERIFY(nextImage(*plain) == expected);
        showPanel();
        QVERIFY(nextImage(*plain) != expected);
        for (int frame = 0; frame < 3; ++frame)
            QVERIFY(nextImage(*frames) == expected);
    }

    void windowsOfOursThatAreNoPanelsStay()
    {
        if (!hasComposite())
            QSKIP("panels can't be left out");
        QWidget window;
        window.setStyleSheet(QStringLiteral("background: #00ff00"));
        window.setGeometry(kPanel.translated(0, -100));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto frames = openFrames(kPanel, kWithout);
        QVERIFY(frames);
        window.setGeometry(kPanel);
        QImage green(kPanel.size(), QImage::Format_RGB32);
        green.fill(Qt::green);
        QTRY_VERIFY(nextImage(*frames) == green);
        showPanel();
        QVERIFY(nextImage(*frames) == green);
    }

    void windowWithAlphaIsOfOneMomentWhereItSaysItIsOpaque()
    {
        if (!canComposite())
            QSKIP("no compositor can run");
        m_compositor.emplace();
        Page page({.rect = kPage, .alpha = Alpha::opaque});
        page.sayOpaque();
        const auto frames = openFrames(kRegion, kWithout);
        QVERIFY(frames);
        showPanel();
        for (int frame = 0; frame < kFrames; ++frame) {
            page.scrollTo(7 * frame);
            QVERIFY2(showsAtOnce(*frames, {&page}), qPrintable(QString::number(frame)));
        }
    }

private:
    void paintDesktop(std::uint32_t pixel)
    {
        const desktop::Connection connection(test::display());
        xcb_change_window_attributes(connection.raw(), connection.root(), XCB_CW_BACK_PIXEL,
                                     &pixel);
        xcb_clear_area(connection.raw(), 0, connection.root(), 0, 0, 0, 0);
        connection.sync();
    }
};

BRINDLECAM_TEST(TestRegionBeneath);

} // namespace brindlecam

#include "tst_region_beneath.moc"
