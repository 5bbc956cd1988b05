#include "long/ChromePlacement.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

/// A screen of so many pixels, with a dock of 40 points below.
ScreenInfo screenOf(QSize pixels, qreal scale = 1, QPoint at = {})
{
    const int dock = qRound(40 * scale);
    return {QStringLiteral("A"), QRect(at, pixels), scale, QRect(at, pixels - QSize(0, dock))};
}

ScreenInfo withDocks(ScreenInfo screen, const QRect& free)
{
    screen.visibleFrame = free;
    return screen;
}

} // namespace

class TestChromePlacement final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void panelStandsWhereThereIsRoom_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<QRect>("captured");
        QTest::addColumn<QRect>("panel");
        QTest::addColumn<bool>("inside");
        const ScreenInfo hd = screenOf({1920, 1080});
        const auto row = [](const char* name, const ScreenInfo& screen, const QRect& captured,
                            const QRect& panel, bool inside = false) {
            QTest::newRow(name) << screen << captured << panel << inside;
        };
        row("in the middle: 10 points below, centred", hd, {600, 300, 400, 200},
            {480, 510, 640, 44});
        row("at the left edge: 8 points from it", hd, {0, 300, 200, 200}, {8, 510, 640, 44});
        row("at the right edge: 8 points from it", hd, {1720, 300, 200, 200}, {1272, 510, 640, 44});
        row("just room below", hd, {600, 782, 400, 200}, {480, 992, 640, 44});
        row("a pixel too little: 10 points above", hd, {600, 783, 400, 200}, {480, 729, 640, 44});
        row("at the lower edge: 10 points above", hd, {600, 880, 400, 200}, {480, 826, 640, 44});
        row("just room above", hd, {600, 58, 400, 982}, {480, 4, 640, 44});
        row("a pixel too little: 12 points above the rectangle's lower edge", hd,
            {600, 57, 400, 983}, {480, 984, 640, 44}, true);
        row("all of what docks leave free", hd, {0, 0, 1920, 1040}, {640, 984, 640, 44}, true);
        row("the whole screen: over the dock", hd, {0, 0, 1920, 1080}, {640, 1024, 640, 44}, true);
        row("small, in a corner", hd, {1900, 1060, 20, 20}, {1272, 1006, 640, 44});
        row("beside a dock on the left", withDocks(hd, {60, 0, 1860, 1080}), {60, 300, 200, 200},
            {68, 510, 640, 44});
        row("beside a dock on the right", withDocks(hd, {0, 0, 1860, 1080}), {1660, 300, 200, 200},
            {1212, 510, 640, 44});
        row("under a dock above: never off the screen", withDocks(hd, {0, 30, 1920, 1050}),
            {600, 0, 400, 20}, {480, 0, 640, 44}, true);
    }
    void panelStandsWhereThereIsRoom()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(QRect, captured);
        QFETCH(QRect, panel);
        QFETCH(bool, inside);
        const auto places = ChromePlacement::places(captured, screen);
        QCOMPARE(places.panel, panel);
        QCOMPARE(places.panelInside, inside);
        QCOMPARE(places.frame, captured.adjusted(-4, -4, 4, 4));
        QVERIFY(screen.native.contains(places.panel));
    }

    void pointsAreScaled_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<QRect>("captured");
        QTest::addColumn<QRect>("panel");
        QTest::addColumn<int>("reach");
        QTest::newRow("1.25, at the left edge")
            << screenOf({1600, 900}, 1.25) << QRect(100, 100, 401, 300) << QRect(10, 413, 800, 55)
            << 5;
        QTest::newRow("1.5, at the left edge")
            << screenOf({1366, 768}, 1.5) << QRect(300, 200, 300, 210) << QRect(12, 425, 960, 66)
            << 6;
        QTest::newRow("1.5, no room below")
            << screenOf({1366, 768}, 1.5) << QRect(500, 300, 300, 400) << QRect(170, 219, 960, 66)
            << 6;
        QTest::newRow("2, elsewhere")
            << screenOf({2880, 1800}, 2, {1920, 100}) << QRect(2400, 500, 800, 400)
            << QRect(2160, 920, 1280, 88) << 8;
        QTest::newRow("2, elsewhere, at the right edge")
            << screenOf({2880, 1800}, 2, {1920, 100}) << QRect(4400, 500, 400, 400)
            << QRect(3504, 920, 1280, 88) << 8;
        QTest::newRow("2, no room above either")
            << screenOf({2880, 1800}, 2, {1920, 100}) << QRect(2400, 200, 800, 1600)
            << QRect(2160, 1688, 1280, 88) << 8;
    }
    void pointsAreScaled()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(QRect, captured);
        QFETCH(QRect, panel);
        QFETCH(int, reach);
        const auto places = ChromePlacement::places(captured, screen);
        QCOMPARE(places.panel, panel);
        QCOMPARE(places.frame, captured.adjusted(-reach, -reach, reach, reach));
    }

    void panelIsNarrowerWhereTheScreenIs_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("width");
        QTest::newRow("just wide enough") << screenOf({656, 500}) << 8 << 640;
        QTest::newRow("a point too narrow") << screenOf({655, 500}) << 8 << 639;
        QTest::newRow("much too narrow") << screenOf({480, 500}) << 8 << 464;
        QTest::newRow("between docks")
            << withDocks(screenOf({800, 500}), {100, 0, 600, 500}) << 108 << 584;
        QTest::newRow("of scale 2, elsewhere") << screenOf({1280, 800}, 2, {640, 0}) << 656 << 1248;
        QTest::newRow("of scale 1.5") << screenOf({900, 600}, 1.5) << 12 << 876;
    }
    void panelIsNarrowerWhereTheScreenIs()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(int, left);
        QFETCH(int, width);
        const QRect& native = screen.native;
        for (const int x : {native.x(), native.center().x(), native.x() + native.width() - 100}) {
            const auto places = ChromePlacement::places({x, native.y() + 10, 100, 100}, screen);
            QCOMPARE(places.panel.x(), left);
            QCOMPARE(places.panel.width(), width);
        }
    }
};

BRINDLECAM_TEST(TestChromePlacement);

} // namespace brindlecam

#include "tst_chromeplacement.moc"
