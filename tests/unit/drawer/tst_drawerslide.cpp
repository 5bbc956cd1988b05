#include "drawer/DrawerPanel.h"
#include "drawer/DrawerSlide.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QPointer>

namespace brindlecam {

namespace {

/// Notes where panels are put.
class NotingPanels final : public Panels {
public:
    std::vector<QRect> places;
    std::vector<double> strengths;

    void assume(QWidget&, PanelRole, const QRect&) override {}
    void show(QWidget& widget, const QRect& native) override
    {
        places.push_back(native);
        widget.show();
    }
    void showAtOnce(QWidget&, const QRect&, const FirstFrame&, std::function<void()>) override {}
    void putAway(QWidget&) override {}
    void place(QWidget&, const QRect& native) override { places.push_back(native); }
    void cut(QWidget&, const QRegion&) override {}
    void focus(QWidget&) override {}
    void swallowDoubleClick() override {}
    void popUp(QWidget&, QPoint, std::vector<MenuEntry>) override {}
    [[nodiscard]] bool fade(QWidget&, double strength) override
    {
        strengths.push_back(strength);
        return true;
    }
};

constexpr QRect kSlidOpen(100, 800, 600, 200);
constexpr QRect kSlidBelow(100, 1042, 600, 200);

struct SlideDesk {
    NotingPanels panels;
    DrawerSlide slide{panels};
    DrawerGeometry::Places places{kSlidOpen, kSlidBelow, true};

    [[nodiscard]] static std::unique_ptr<DrawerPanel> make()
    {
        return std::make_unique<DrawerPanel>(600, DrawerPanel::Entries::none, QString());
    }
};

} // namespace

class TestDrawerSlide final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void comesFromBelowToItsPlace()
    {
        SlideDesk desk;
        const auto panel = SlideDesk::make();
        desk.slide.in(*panel, desk.places);
        QVERIFY(panel->isVisible());
        QCOMPARE(desk.panels.places, std::vector{DrawerSlide::firstPlace(desk.places)});
        QCOMPARE(desk.panels.places.front().y(), 993); // what comes 16 ms after 1042
        QTRY_COMPARE(desk.panels.places.back(), kSlidOpen);
        // Upwards all the time, quickly at first.
        const auto& all = desk.panels.places;
        QVERIFY(std::ranges::is_sorted(all, std::ranges::greater(),
                                       [](const QRect& place) { return place.y(); }));
        QVERIFY(desk.panels.strengths.empty());
    }

    void fadesInWhereAScreenLiesBelow()
    {
        SlideDesk desk;
        desk.places.slides = false;
        const auto panel = SlideDesk::make();
        desk.slide.in(*panel, desk.places);
        QCOMPARE(desk.panels.places, std::vector{kSlidOpen});
        QCOMPARE(desk.panels.strengths.size(), std::size_t(1));
        QVERIFY(desk.panels.strengths.front() < 0.25);
        QTRY_COMPARE(desk.panels.strengths.back(), 1.0);
        desk.slide.out(SlideDesk::make(), desk.places);
        QTRY_COMPARE(desk.panels.strengths.back(), 0.0);
        QCOMPARE(desk.panels.places, std::vector{kSlidOpen});
    }

    void goesDownAndFadesAndIsGone()
    {
        SlideDesk desk;
        auto panel = SlideDesk::make();
        panel->show();
        const QPointer<DrawerPanel> watched(panel.get());
        desk.slide.out(std::move(panel), desk.places);
        QVERIFY(watched->isVisible());
        QTRY_VERIFY(!watched);
        QCOMPARE(desk.panels.places.back(), kSlidBelow);
        QCOMPARE(desk.panels.strengths.back(), 0.0);
        QVERIFY(!desk.slide.cutShort());
    }

    void goesFromWhereItHasGotTo()
    {
        SlideDesk desk;
        auto panel = SlideDesk::make();
        desk.slide.in(*panel, desk.places);
        QTRY_VERIFY(desk.panels.places.back().y() < kSlidBelow.y());
        const int reached = desk.panels.places.back().y();
        desk.panels.places.clear();
        desk.slide.out(std::move(panel), desk.places);
        QTRY_VERIFY(!desk.panels.places.empty());
        QVERIFY(desk.panels.places.front().y() >= reached);
        QTRY_COMPARE(desk.panels.places.back().y(), reached + 242);
    }

    void fadesFromWhatItHasGotTo()
    {
        SlideDesk desk;
        desk.places.slides = false;
        auto panel = SlideDesk::make();
        desk.slide.in(*panel, desk.places);
        QCOMPARE(desk.panels.strengths.size(), std::size_t(1));
        const double reached = desk.panels.strengths.front();
        QCOMPARE(qRound(100 * reached), 20); // what comes in 16 ms
        desk.panels.strengths.clear();
        const QPointer<DrawerPanel> watched(panel.get());
        desk.slide.out(std::move(panel), desk.places);
        QTRY_VERIFY(!watched);
        QVERIFY(desk.panels.strengths.front() > reached / 2);
        for (const double strength : desk.panels.strengths)
            QVERIFY(strength <= reached);
    }

    void isGoneAtOnceWhenCutShort()
    {
        SlideDesk desk;
        auto panel = SlideDesk::make();
        panel->show();
        const QPointer<DrawerPanel> watched(panel.get());
        desk.slide.out(std::move(panel), desk.places);
        QVERIFY(desk.slide.cutShort());
        QVERIFY(!watched);
        desk.panels.places.clear();
        QTest::qWait(200);
        QVERIFY(desk.panels.places.empty());
    }

    void aPanelThatSomethingIsDraggedFromIsKeptOffTheScreen()
    {
        SlideDesk desk;
        auto panel = SlideDesk::make();
        panel->show();
        const QPointer<DrawerPanel> watched(panel.get());
        desk.slide.setDragging(true);
        desk.slide.discard(std::move(panel));
        QVERIFY(watched && !watched->isVisible());
        desk.slide.setDragging(false);
        QVERIFY(watched); // it may be its own tile that says so
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!watched);
    }
};

BRINDLECAM_TEST(TestDrawerSlide);

} // namespace brindlecam

#include "tst_drawerslide.moc"
