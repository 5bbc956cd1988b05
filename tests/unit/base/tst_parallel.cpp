#include "base/Parallel.h"
#include "support/TestCase.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <vector>

namespace brindlecam {

class TestParallel final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyTurnIsTakenOnce_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {0, 1, 2, 7, 1000})
            QTest::addRow("%d", count) << count;
    }
    void everyTurnIsTakenOnce()
    {
        QFETCH(int, count);
        std::vector<std::atomic<int>> taken(static_cast<std::size_t>(count));
        inParallel(count, [&](int turn) { ++taken[static_cast<std::size_t>(turn)]; });
        for (const auto& times : taken)
            QCOMPARE(times.load(), 1);
    }

    void freeThreadsHelp()
    {
        if (QThread::idealThreadCount() < 2)
            QSKIP("there is one processor only");
        // Two turns that wait for each other end only when they are taken at the same time.
        QSemaphore arrived;
        inParallel(2, [&](int) {
            arrived.release();
            while (!arrived.tryAcquire(2, 1)) {
            }
            arrived.release(2);
        });
        QCOMPARE(arrived.available(), 2);
    }

    void aBusyPoolIsNotWaitedFor()
    {
        QSemaphore goOn;
        const int threads = QThreadPool::globalInstance()->maxThreadCount();
        for (int i = 0; i < threads; ++i)
            QThreadPool::globalInstance()->start([&] { goOn.acquire(); });
        std::atomic<int> turns = 0;
        inParallel(10, [&](int) { ++turns; });
        QCOMPARE(turns.load(), 10);
        goOn.release(threads);
        QThreadPool::globalInstance()->waitForDone();
    }
};

BRINDLECAM_TEST(TestParallel);

} // namespace brindlecam

#include "tst_parallel.moc"
