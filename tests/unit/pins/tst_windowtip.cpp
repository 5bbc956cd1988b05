#include "PinnedFixture.h"
#include "look/Pill.h"
#include "notices/WindowTip.h"
#include "support/TestCase.h"
#include "support/ToolTips.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPointer>

#include <optional>

namespace brindlecam {

using test::kPinned;
using test::kPinnedDenseScreen;
using test::PinnedFixture;
using test::qtShowsATip;
using test::restOn;

namespace {

struct TipFixture : PinnedFixture {
    TipFixture() { open(); }

    /// The tip on the screen, or null.
    [[nodiscard]] QPointer<QWidget> tip() const
    {
        return panels.shown.empty() ? nullptr : panels.shown.back().widget;
    }
    void send(QEvent::Type type) const
    {
        QEvent event(type);
        QCoreApplication::sendEvent(&view(), &event);
    }
};

} // namespace

class TestWindowTip final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void standsByThePointerOnTheFreePartOfTheScreen_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QRect>("expected");
        // A dock of 40 pixels below, one of 60 on the left.
        const ScreenInfo plain{QStringLiteral("A"), QRect(0, 0, 1000, 800), 1,
                               QRect(60, 0, 940, 760)};
        QTest::newRow("under it, centred") << plain << QPoint(500, 300) << QRect(450, 322, 100, 30);
        QTest::newRow("at the right edge") << plain << QPoint(990, 300) << QRect(896, 322, 100, 30);
        QTest::newRow("at the left dock") << plain << QPoint(70, 300) << QRect(64, 322, 100, 30);
        QTest::newRow("just room above the dock")
            << plain << QPoint(500, 704) << QRect(450, 726, 100, 30);
        QTest::newRow("too little room: above the pointer")
            << plain << QPoint(500, 705) << QRect(450, 667, 100, 30);
        QTest::newRow("over the dock below")
            << plain << QPoint(500, 795) << QRect(450, 726, 100, 30);
        const ScreenInfo dense{QStringLiteral("B"), QRect(1000, 100, 2000, 1000), 2,
                               QRect(1000, 160, 2000, 940)};
        QTest::newRow("of scale 2, elsewhere")
            << dense << QPoint(2000, 600) << QRect(1900, 644, 200, 60);
        QTest::newRow("of scale 2, under the dock above")
            << dense << QPoint(2990, 100) << QRect(2792, 168, 200, 60);
        const ScreenInfo tiny{QStringLiteral("C"), QRect(0, 0, 90, 30), 1, QRect(0, 0, 90, 30)};
        QTest::newRow("no room: cut off at the far end")
            << tiny << QPoint(40, 10) << QRect(4, 4, 100, 30);
    }
    void standsByThePointerOnTheFreePartOfTheScreen()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(QPoint, pointer);
        QFETCH(QRect, expected);
        QCOMPARE(WindowTip::place({100, 30}, pointer, screen), expected);
    }

    void coversNothingThatIsSpared_data()
    {
        QTest::addColumn<QRect>("spared");
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<std::optional<QRect>>("expected");
        using Place = std::optional<QRect>;
        QTest::newRow("far away: under the pointer")
            << QRect(0, 0, 200, 200) << QPoint(500, 300) << Place(QRect(450, 322, 100, 30));
        QTest::newRow("below the pointer: above it")
            << QRect(400, 330, 200, 200) << QPoint(500, 300) << Place(QRect(450, 262, 100, 30));
        QTest::newRow("all around: nowhere")
            << QRect(400, 200, 200, 200) << QPoint(500, 300) << Place();
        QTest::newRow("below, and no room above")
            << QRect(0, 40, 1000, 700) << QPoint(500, 30) << Place();
    }
    void coversNothingThatIsSpared()
    {
        QFETCH(QRect, spared);
        QFETCH(QPoint, pointer);
        QFETCH(std::optional<QRect>, expected);
        const ScreenInfo screen{QStringLiteral("A"), QRect(0, 0, 1000, 800), 1,
                                QRect(0, 0, 1000, 800)};
        QCOMPARE(WindowTip::placeBeside(spared, {100, 30}, pointer, screen), expected);
    }

    void isAPanelThatReadsOutThePinsText()
    {
        TipFixture f;
        QVERIFY(!f.tip());
        QVERIFY(restOn(f.view()));
        QVERIFY(!qtShowsATip());
        QCOMPARE(f.panels.roles, std::vector{PanelRole::toast});
        QVERIFY(f.tip()->isVisible());
        QCOMPARE(f.tip()->accessibleName(), f.view().toolTip());
        const QSizeF size = Pill::toolTip(f.view().toolTip()).size();
        QCOMPARE(f.panels.shown.back().native,
                 WindowTip::place(size, kPinned.topLeft() + f.view().rect().center(),
                                  f.displays.all.front()));
        const QColor ground = f.tip()->grab().toImage().pixelColor(4, f.tip()->height() / 2);
        QVERIFY2(ground.lightness() < 60, qPrintable(ground.name()));
    }

    void standsOnTheScreenUnderThePointer()
    {
        TipFixture f;
        f.displays.all.push_back(kPinnedDenseScreen);
        f.open(QRect(1900, 300, 400, 200));
        QVERIFY(restOn(f.view()));
        QVERIFY(kPinnedDenseScreen.native.contains(f.panels.shown.back().native));
    }

    void goesByItselfInTheEnd()
    {
        TipFixture f;
        WindowTip brief({f.panels, f.displays, f.compositing}, f.activity,
                        std::chrono::milliseconds(1));
        brief.serve(f.pin(), [](QPointF place) {
            return place.toPoint();
        }); // asked before the one that is there already
        for (int round = 0; round < 2; ++round) {
            QVERIFY(restOn(f.view()));
            QVERIFY(f.tip());
            QTRY_VERIFY(!f.tip());
        }
    }

    void staysForAWhile()
    {
        TipFixture f;
        QVERIFY(restOn(f.view()));
        QTest::qWait(50);
        QVERIFY(f.tip());
    }

    void keepsClearOfDocks()
    {
        TipFixture f;
        QRect& free = f.displays.all.front().visibleFrame;
        free.setBottom(kPinned.bottom()); // there is no room under the pointer
        QVERIFY(restOn(f.view()));
        QVERIFY(free.contains(f.panels.shown.back().native));
    }

    void goesWithWhatTheUserDoesNext_data()
    {
        using Act = std::function<void(TipFixture&)>;
        QTest::addColumn<Act>("act");
        QTest::newRow("leave") << Act([](TipFixture& f) { f.send(QEvent::Leave); });
        QTest::newRow("press") << Act(
            [](TipFixture& f) { f.mouse(QEvent::MouseButtonPress, kPinned.center()); });
        QTest::newRow("press on what the view does not reach") << Act([](TipFixture& f) {
            const QPointF at(5, 5);
            QMouseEvent event(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&f.pin(), &event);
        });
        QTest::newRow("wheel") << Act([](TipFixture& f) { f.wheel(1); });
        QTest::newRow("key") << Act([](TipFixture& f) {
            QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
            QCoreApplication::sendEvent(&f.view(), &event);
        });
        QTest::newRow("menu") << Act([](TipFixture& f) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, {5, 5});
            QCoreApplication::sendEvent(&f.view(), &event);
        });
        QTest::newRow("somebody moves the pin") << Act([](TipFixture& f) { f.pin().move(77, 55); });
        QTest::newRow("the pin closes") << Act([](TipFixture& f) { f.pin().dismiss(); });
        QTest::newRow("the pin is hidden") << Act([](TipFixture& f) { f.pin().hide(); });
        QTest::newRow("a capture begins") << Act([](TipFixture& f) { QVERIFY(f.pins.hideTip()); });
    }
    void goesWithWhatTheUserDoesNext()
    {
        QFETCH(std::function<void(TipFixture&)>, act);
        TipFixture f;
        QVERIFY(restOn(f.view()));
        QVERIFY(f.tip());
        act(f);
        QVERIFY(!f.tip()); // and takes no memory
        QVERIFY(!f.pins.hideTip());
    }

    void comesAgain()
    {
        TipFixture f;
        QVERIFY(restOn(f.view()));
        f.send(QEvent::Leave);
        QVERIFY(restOn(f.view()));
        QVERIFY(f.tip()->isVisible());
    }

    void staysWhereItIsWhileThePointerRestsAnew()
    {
        TipFixture f;
        QVERIFY(restOn(f.view()));
        QVERIFY(restOn(f.view()));
        QCOMPARE(f.panels.shown.size(), std::size_t(1));
        QVERIFY(f.tip()->isVisible());
    }

    void noneWhileACaptureRuns()
    {
        TipFixture f;
        f.activity.capture = true;
        QVERIFY(restOn(f.view()));
        QVERIFY(!f.tip());
        QVERIFY(!qtShowsATip());
    }

    void noneWithoutScreens()
    {
        TipFixture f;
        f.displays.all.clear();
        QVERIFY(restOn(f.view()));
        QVERIFY(!f.tip());
        QVERIFY(!qtShowsATip());
    }
};

BRINDLECAM_TEST(TestWindowTip);

} // namespace brindlecam

#include "tst_windowtip.moc"
