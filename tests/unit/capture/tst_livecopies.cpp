#include "app/Defaults.h"
#include "app/Prefs.h"
#include "capture/Output.h"
#include "recents/History.h"
#include "support/FakePasteboard.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QTemporaryDir>
#include <QThreadPool>

#include <random>

namespace brindlecam {

namespace {

Rendered livePicture(QColor colour)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(colour);
    return {image, image.size()};
}

/// A photograph of nothing: slow to encode.
QImage noise(QSize pixels)
{
    QImage image(pixels, QImage::Format_RGB32);
    std::minstd_rand random(1);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            image.setPixel(x, y, 0xff000000U | static_cast<QRgb>(random()));
    }
    return image;
}

struct LiveCopies {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    test::FakePasteboard pasteboard;
    History history{folder.filePath(QStringLiteral("historia"))};
    test::GatedExecutor gate;
    Output output{pasteboard, history, prefs, gate.executor()};

    ~LiveCopies() { settle(); }

    QColor shownColour() const
    {
        const QImage shown = pasteboard.picture();
        return shown.isNull() ? QColor() : shown.pixelColor(0, 0);
    }
    // Lets everything run in the order it was handed in.
    void settle()
    {
        do {
            test::sendAllPostedEvents();
            if (!gate.jobs.empty())
                gate.run(0);
            test::sendAllPostedEvents();
        } while (!gate.jobs.empty());
    }
    void runAndDeliver(std::size_t index)
    {
        gate.run(index);
        test::sendAllPostedEvents();
    }
};

} // namespace

class TestLiveCopies final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsSoonStaleWaitsForAPauseWhileOthersOvertakeIt()
    {
        LiveCopies f;
        f.output.deliver(livePicture(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(livePicture(Qt::green), {.copy = true, .soonStale = true});
        QCOMPARE(f.gate.jobs.size(), 1U);
        f.runAndDeliver(0);
        f.output.deliver(livePicture(Qt::blue), {.copy = true, .soonStale = true});
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
        LiveCopies f;
        f.output.deliver(livePicture(Qt::red), {.copy = true, .soonStale = true});
        f.settle();
        f.output.deliver(livePicture(Qt::blue), {.copy = true, .soonStale = true});
        QCOMPARE(f.gate.jobs.size(), 1U);
    }

    void whatWaitsForAPauseIsEncodedAtOnceWhenItIsTheResult()
    {
        LiveCopies f;
        const Rendered last = livePicture(Qt::blue);
        f.output.deliver(livePicture(Qt::red), {.copy = true, .soonStale = true});
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
        LiveCopies f;
        f.output.deliver(livePicture(Qt::red), {.copy = true, .soonStale = true});
        f.output.deliver(livePicture(Qt::blue), {.copy = true, .soonStale = true});
        f.output.sessionEnded();
        QCOMPARE(f.gate.jobs.size(), 2U);
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void liveCopiesAreConcealedUntilTheSessionEnds()
    {
        LiveCopies f;
        f.output.deliver(livePicture(Qt::red), {.copy = true, .soonStale = true});
        f.settle();
        QVERIFY(f.pasteboard.concealed);
        f.output.deliver(livePicture(Qt::blue), {.copy = true, .soonStale = true});
        f.settle();
        QVERIFY(f.pasteboard.concealed);
        QCOMPARE(f.pasteboard.revealed, 0);
        f.output.sessionEnded();
        QCOMPARE(f.pasteboard.revealed, 1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void theResultIsNotConcealed()
    {
        LiveCopies f;
        const Rendered last = livePicture(Qt::blue);
        f.output.deliver(last, {.copy = true, .soonStale = true});
        f.settle();
        f.output.deliver(last, {.copy = true});
        f.output.sessionEnded();
        f.settle();
        QVERIFY(!f.pasteboard.concealed);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void whatIsStillEncodedWhenTheSessionEndsIsNotConcealedAndNothingOlderIsRevealed()
    {
        LiveCopies f;
        f.output.deliver(livePicture(Qt::red), {.copy = true, .soonStale = true});
        f.settle();
        f.output.deliver(livePicture(Qt::blue), {.copy = true, .soonStale = true});
        f.output.sessionEnded();
        QCOMPARE(f.pasteboard.revealed, 0);
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        QVERIFY(f.pasteboard.concealed);
        f.settle();
        QVERIFY(!f.pasteboard.concealed);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void theNextSessionConcealsAgain()
    {
        LiveCopies f;
        const Rendered picture = livePicture(Qt::red);
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
        LiveCopies f;
        Output output(f.pasteboard, f.history, f.prefs,
                      [&pool](std::function<void()> job) { pool.start(std::move(job)); });
        const QImage image = noise(QSize(1600, 1000));
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
