#include "OutputFixture.h"
#include "support/TestCase.h"

#include <QThreadPool>

namespace brindlecam {

/// What is copied while a session goes on, and what stays of it.
class TestLiveCopies final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsSoonStaleWaitsForAPauseWhileOthersOvertakeIt()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(test::plain(Qt::green), {.copy = true, .soonStale = true});
        QCOMPARE(f.gate.jobs.size(), 1U);
        f.runAndDeliver(0);
        f.output.deliver(test::plain(Qt::blue), {.copy = true, .soonStale = true});
        QCOMPARE(f.pasteboard.changes, 0);
        QVERIFY(f.gate.jobs.empty());
        QTRY_COMPARE(f.gate.jobs.size(), 1U);
        f.runAndDeliver(0);
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
        QCOMPARE(f.output.stoppedEncodes(), 2);
    }

    void whatIsSoonStaleDoesNotWaitAfterAPause()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.settle();
        f.output.deliver(test::plain(Qt::blue), {.copy = true, .soonStale = true});
        QCOMPARE(f.gate.jobs.size(), 1U);
    }

    void whatWaitsForAPauseIsEncodedAtOnceWhenItIsTheResult()
    {
        test::OutputFixture f;
        const Rendered last = test::plain(Qt::blue);
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(last, {.copy = true, .soonStale = true});
        QCOMPARE(f.gate.jobs.size(), 1U);
        f.output.deliver(last, {.copy = true});
        QCOMPARE(f.gate.jobs.size(), 2U);
        f.settle();
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void whatWaitsForAPauseIsEncodedAtOnceWhenTheSessionEnds()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(test::plain(Qt::blue), {.copy = true, .soonStale = true});
        f.output.sessionEnded();
        QCOMPARE(f.gate.jobs.size(), 2U);
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void whatWaitsForAPauseIsEncodedAtOnceWhenTheProgramEnds()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(test::plain(Qt::blue), {.copy = true, .soonStale = true});
        bool finished = false;
        f.output.finishAll([&finished] { finished = true; });
        QCOMPARE(f.gate.jobs.size(), 2U);
        QVERIFY(!finished);
        f.settle();
        QVERIFY(finished);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void liveCopiesAreConcealedUntilTheSessionEnds()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.settle();
        QVERIFY(f.pasteboard.concealed);
        f.output.deliver(test::plain(Qt::blue), {.copy = true, .soonStale = true});
        f.settle();
        QVERIFY(f.pasteboard.concealed);
        QCOMPARE(f.pasteboard.revealed, 0);
        f.output.sessionEnded();
        QCOMPARE(f.pasteboard.revealed, 1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void theResultIsNotConcealed()
    {
        test::OutputFixture f;
        const Rendered last = test::plain(Qt::blue);
        f.output.deliver(last, {.copy = true, .soonStale = true});
        f.settle();
        f.output.deliver(last, {.copy = true});
        QVERIFY(!f.pasteboard.concealed);
        f.output.sessionEnded();
        f.settle();
        QCOMPARE(f.pasteboard.revealed, 0);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void whatIsStillEncodedWhenTheSessionEndsIsNotConcealedAndNothingOlderIsRevealed()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.settle();
        f.output.deliver(test::plain(Qt::blue), {.copy = true, .soonStale = true});
        f.output.sessionEnded();
        QCOMPARE(f.pasteboard.revealed, 0);
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        QVERIFY(f.pasteboard.concealed);
        f.settle();
        QVERIFY(!f.pasteboard.concealed);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void theSameOnceMoreGoesOnWaitingForAPause()
    {
        test::OutputFixture f;
        const Rendered last = test::plain(Qt::blue);
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(last, {.copy = true, .soonStale = true});
        f.output.deliver(last, {.copy = true, .soonStale = true});
        QCOMPARE(f.gate.jobs.size(), 1U);
        QTRY_COMPARE(f.gate.jobs.size(), 2U);
        f.settle();
        QCOMPARE(f.pasteboard.changes, 1);
        QVERIFY(f.pasteboard.concealed);
    }

    void whatIsOvertakenWhileItWaitsForAPauseIsToldAfterTheCall()
    {
        test::OutputFixture f;
        std::optional<Fate> fate;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(test::plain(Qt::green), {.copy = true, .soonStale = true},
                         [&fate](const Fate& told) { fate = told; });
        f.output.copy(ClipboardContent::text(QStringLiteral("hola")));
        QVERIFY(!fate);
        test::sendAllPostedEvents();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::overtaken);
        f.settle();
        QCOMPARE(f.pasteboard.plainText, std::optional(QStringLiteral("hola")));
        QCOMPARE(f.pasteboard.changes, 1);
    }

    void whoPutsTheNextOneWhenToldIsNotOvertakenByTheOneBefore()
    {
        test::OutputFixture f;
        const Rendered shared = test::plain(Qt::red);
        f.output.deliver(shared, {.copy = true, .soonStale = true}, [&f](const Fate& fate) {
            QCOMPARE(fate.clipboard, ClipboardFate::overtaken);
            f.output.deliver(test::plain(Qt::blue), {.copy = true});
        });
        f.output.deliver(shared, {.copy = true});
        f.output.sessionEnded();
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
        QCOMPARE(f.pasteboard.changes, 2);
    }

    void theNextSessionConcealsAgain()
    {
        test::OutputFixture f;
        const Rendered picture = test::plain(Qt::red);
        f.output.deliver(picture, {.copy = true, .soonStale = true});
        f.settle();
        f.output.sessionEnded();
        f.output.deliver(picture, {.copy = true, .soonStale = true});
        f.settle();
        QVERIFY(f.pasteboard.concealed);
    }

    void quickChangesMakeNoMoreWholeEncodesThanAreShown_data()
    {
        QTest::addColumn<int>("threads");
        QTest::newRow("one thread") << 1;
        QTest::newRow("two threads") << 2;
    }
    void quickChangesMakeNoMoreWholeEncodesThanAreShown()
    {
        QFETCH(const int, threads);
        constexpr int kChanges = 30;
        QThreadPool pool;
        pool.setMaxThreadCount(threads);
        test::OutputFixture f;
        Output output(f.pasteboard, f.history, f.prefs,
                      [&pool](std::function<void()> job) { pool.start(std::move(job)); });
        const QImage image = test::noise(QSize(1600, 1000)).image();
        // No answer arrives in between, as when each comes sooner than the one before is encoded.
        for (int change = 0; change < kChanges; ++change) {
            QImage changed = image;
            changed.setPixelColor(0, 0, QColor::fromHsv(change * 10, 255, 255));
            output.deliver(Rendered(changed, changed.size()), {.copy = true, .soonStale = true});
        }
        output.finishAll();
        const int ended = kChanges - output.stoppedEncodes();
        QVERIFY2(ended <= 1 + f.pasteboard.changes,
                 qPrintable(QStringLiteral("%1 encodes ended, %2 pictures were shown")
                                .arg(ended)
                                .arg(f.pasteboard.changes)));
        QCOMPARE(f.pasteboard.picture().pixel(0, 0),
                 QColor::fromHsv((kChanges - 1) * 10, 255, 255).rgb());
    }
};

BRINDLECAM_TEST(TestLiveCopies);

} // namespace brindlecam

#include "tst_livecopies.moc"
