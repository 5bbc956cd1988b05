#include "capture/CaptureFixture.h"
#include "capture/Countdown.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QImage>

namespace brindlecam {

namespace {

using namespace std::chrono_literals;

const ScreenInfo kPlain{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1, QRect(0, 0, 1920, 1040)};
const ScreenInfo kDense{QStringLiteral("B"), QRect(1920, 0, 2880, 1800), 1.5,
                        QRect(1920, 0, 2880, 1800)};

} // namespace

/// Two screens and a countdown with short seconds.
struct CountdownDesk {
    test::FakeDisplays displays;
    test::FakePanels panels;
    test::FakeCompositing compositing;
    Countdown countdown;
    QStringList done;

    explicit CountdownDesk(Countdown::Timing timing = {.tick = 60ms, .handOff = 30ms})
        : countdown(displays, panels, compositing, timing)
    {
        displays.all = {kPlain, kDense};
    }
    void run(int seconds, const char* name = "done")
    {
        countdown.run(seconds, [this, name] { done << QString::fromLatin1(name); });
    }
};

/// Looks before each timer of the program acts: nothing comes in between, however busy it is.
class TimerWatch final : public QObject {
public:
    explicit TimerWatch(std::function<void()> look)
        : m_look(std::move(look))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Timer)
            m_look();
        return false;
    }

private:
    const std::function<void()> m_look;
};

namespace {

/// Waits until a countdown of two more seconds would have ended. For what must not happen.
void outlastEverything()
{
    CountdownDesk later;
    later.run(3);
    QTRY_COMPARE(later.done.size(), 1);
}

} // namespace

class TestCountdown final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void realSecondsAndAPauseForThePanelToGo()
    {
        const Countdown::Timing timing;
        QCOMPARE(timing.tick.count(), 1000);
        QCOMPARE(timing.handOff.count(), 150);
    }

    void countsEverySecondAndActsWhenThePanelIsGone()
    {
        CountdownDesk desk({.tick = 200ms, .handOff = 200ms});
        using Seen = std::pair<int, int>; // what is left, and how many panels show it
        std::vector<Seen> seen;
        const TimerWatch watch([&] {
            const Seen now(desk.countdown.remaining(), desk.panels.visibleNow());
            if (desk.done.isEmpty() && (seen.empty() || seen.back() != now))
                seen.push_back(now);
        });
        QElapsedTimer clock;
        clock.start();
        desk.run(3);
        QCOMPARE(desk.countdown.remaining(), 3);
        QTRY_COMPARE(desk.done.size(), 1);
        QVERIFY2(clock.elapsed() >= 795, qPrintable(QString::number(clock.elapsed())));
        // At the end the panel has time to go.
        QCOMPARE(seen, (std::vector<Seen>{{3, 1}, {2, 1}, {1, 1}, {0, 0}}));
        outlastEverything();
        QCOMPARE(desk.done.size(), 1);
    }

    void aSecondOneReplacesTheFirst()
    {
        CountdownDesk desk;
        desk.run(2, "first");
        desk.run(3, "second");
        QCOMPARE(desk.panels.visibleNow(), 1);
        QCOMPARE(desk.countdown.remaining(), 3);
        QTRY_VERIFY(!desk.done.isEmpty());
        QCOMPARE(desk.done, QStringList(QStringLiteral("second")));
    }

    void cancellingCountsWhileThePanelHasGoneToo()
    {
        CountdownDesk desk;
        bool cancelled = false;
        const TimerWatch watch([&] {
            if (desk.panels.visibleNow() == 0)
                cancelled = desk.countdown.cancel() || cancelled;
        });
        desk.run(1, "first");
        QTRY_VERIFY(cancelled);
        outlastEverything();
        QVERIFY(desk.done.isEmpty());
    }

    void cancelledOnesNeverAct()
    {
        CountdownDesk desk;
        desk.run(1);
        desk.countdown.cancel();
        QCOMPARE(desk.panels.visibleNow(), 0);
        outlastEverything();
        QVERIFY(desk.done.isEmpty());
    }

    void theActionMayStartTheNextOne()
    {
        CountdownDesk desk;
        desk.countdown.run(1, [&desk] { desk.run(1, "next"); });
        QTRY_COMPARE(desk.done, QStringList(QStringLiteral("next")));
    }

    void aCaptureEndsARunningCountdown()
    {
        test::CaptureFixture f;
        bool acted = false;
        f.countdown.run(50, [&acted] { acted = true; });
        f.controller.captureFullScreen();
        QCOMPARE(f.countdown.remaining(), 0);
        QCOMPARE(f.grabber.calls, 0); // its digit goes off the screen first
        QTRY_COMPARE(f.grabber.calls, 1);
        QVERIFY(!acted);
        QVERIFY(!f.countdown.cancel());
    }

    void aStartThatIsRefusedLeavesTheCountdownAlone()
    {
        test::CaptureFixture f;
        f.activity.recording = true;
        f.countdown.run(50, [] {});
        f.controller.begin();
        QVERIFY(f.countdown.remaining() > 0);
        QVERIFY(f.countdown.cancel());
    }

    void noSecondsMeanTheFirstTick()
    {
        CountdownDesk desk;
        desk.run(0);
        QVERIFY(desk.done.isEmpty());
        QTRY_COMPARE(desk.done.size(), 1);
    }

    void standsInTheMiddleOfTheScreenWithThePointer_data()
    {
        QTest::addColumn<bool>("known");
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QRect>("expected");
        const QRect onPlain(900, 480, 120, 120);
        QTest::newRow("primary") << true << QPoint(5, 5) << onPlain;
        QTest::newRow("scaled") << true << QPoint(2000, 900) << QRect(3270, 810, 180, 180);
        QTest::newRow("outside") << true << QPoint(-50, 5) << onPlain;
        QTest::newRow("unknown") << false << QPoint() << onPlain;
    }
    void standsInTheMiddleOfTheScreenWithThePointer()
    {
        QFETCH(bool, known);
        QFETCH(QPoint, pointer);
        CountdownDesk desk;
        if (known)
            desk.displays.pointerAt = pointer;
        desk.run(3);
        QCOMPARE(desk.panels.roles, std::vector{PanelRole::countdown});
        QTEST(desk.panels.shown.at(0).native, "expected");
    }

    void withoutAScreenItActsAtOnce()
    {
        CountdownDesk desk;
        desk.displays.all.clear();
        desk.run(3);
        QCOMPARE(desk.done.size(), 1);
        QVERIFY(desk.panels.shown.empty());
    }

    void thePanelIsDarkRoundedAndShowsTheCountInWhite()
    {
        CountdownDesk desk;
        desk.compositing.on = false;
        desk.compositing.beneath = Qt::white;
        desk.run(8);
        const QImage image = desk.panels.shown.at(0).widget->grab().toImage();
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
        QCOMPARE(image.pixelColor(119, 119), QColor(Qt::white));
        // White 0.1 at alpha 0.85 over white.
        const int dark = image.pixelColor(10, 60).red();
        QVERIFY2(qAbs(dark - 60) <= 1, qPrintable(QString::number(dark)));
        QRect white;
        for (int y = 2; y < 118; ++y) {
            for (int x = 30; x < 90; ++x) {
                if (image.pixelColor(x, y).red() > 200)
                    white |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY2(qAbs(white.center().x() - 60) <= 2, "centred");
        QVERIFY2(white.height() >= 40 && white.height() <= 56, "64 points");
        QVERIFY2(white.top() >= 22 && white.bottom() <= 102, "inside its box");
    }
};

BRINDLECAM_TEST(TestCountdown);

} // namespace brindlecam

#include "tst_countdown.moc"
