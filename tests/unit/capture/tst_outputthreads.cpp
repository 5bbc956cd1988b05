#include "OutputFixture.h"
#include "support/TestCase.h"

#include <QThreadPool>

namespace brindlecam {

/// How work on other threads and the main thread meet.
class TestOutputThreads final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void destroyingItWaitsForWhatWasDelivered()
    {
        test::OutputFixture place;
        {
            Output output(place.pasteboard, place.history, place.prefs,
                          [](std::function<void()> job) {
                              QThreadPool::globalInstance()->start(std::move(job));
                          });
            output.deliver(test::plain(Qt::red, {1000, 800}),
                           {.copy = true, .saveTo = place.file(), .history = true});
        }
        QCOMPARE(QImage(place.file()).pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(place.history.items().size(), 1);
        QCOMPARE(place.pasteboard.changes, 1);
    }

    // A job goes on for a moment after it has reported.
    void whatTheCompletionHoldsIsLetGoOnTheMainThread()
    {
        test::OutputFixture place;
        std::vector<std::function<void()>> stillThere;
        Output output(place.pasteboard, place.history, place.prefs,
                      [&stillThere](std::function<void()> job) {
                          job();
                          stillThere.push_back(std::move(job));
                      });
        const auto held = std::make_shared<int>(0);
        output.deliver(test::plain(Qt::red, {1000, 800}), {.copy = true, .saveTo = place.file()},
                       [held](const Fate&) { ++*held; });
        output.finishAll();
        QCOMPARE(*held, 1);
        QVERIFY(!stillThere.empty());
        QCOMPARE(held.use_count(), 1);
    }
};

BRINDLECAM_TEST(TestOutputThreads);

} // namespace brindlecam

#include "tst_outputthreads.moc"
