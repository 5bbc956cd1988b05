// The sanitizer's positive control, under the same options, suppressions and orders as the tests:
// each race in here is to be reported, and nothing else. control.sh reads the names of the
// variables in the reports.
#include <QCoreApplication>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

// What a report calls them; not in an unnamed namespace, which would be part of the name.
int racedWithJob = 0;
int racedWithQueuedCall = 0;
int racedAfterStart = 0;
char racedByCopying[4096] = {};
int orderedByStart = 0;
int orderedByWaiting = 0;
int orderedByQueuedCall = 0;
int orderedByThread = 0;

namespace {

/// Without any order that the sanitizer could see.
void waitFor(const std::atomic<bool>& flag)
{
    while (!flag.load(std::memory_order_relaxed))
        std::this_thread::yield();
}

void raceWithAJob()
{
    QThreadPool pool;
    pool.start([] { racedWithJob = 1; });
    racedWithJob = 2;
    pool.waitForDone();
}

/// Waiting for one pool says nothing about another one's jobs.
void raceWithAnotherPoolsJob()
{
    QThreadPool pool;
    QThreadPool other;
    pool.start([] { racedAfterStart = 1; });
    other.start([] {});
    other.waitForDone();
    racedAfterStart = 2;
    pool.waitForDone();
}

/// In a function of the C library, which is not instrumented either.
void raceByCopying(std::size_t size)
{
    std::thread writer([size] { std::memset(racedByCopying, 1, size); });
    std::vector<char> copy(size);
    std::memcpy(copy.data(), racedByCopying, size);
    writer.join();
    std::printf("%d\n", copy[0]);
}

/// What the poster does later has no order, even where it comes first.
void raceWithAQueuedCall()
{
    std::atomic<bool> isLater = false;
    QObject receiver;
    QThreadPool pool;
    pool.start([&receiver, &isLater] {
        QMetaObject::invokeMethod(
            &receiver,
            [&isLater] {
                waitFor(isLater);
                std::printf("%d\n", racedWithQueuedCall);
                QCoreApplication::quit();
            },
            Qt::QueuedConnection);
        racedWithQueuedCall = 1;
        isLater.store(true, std::memory_order_relaxed);
    });
    QCoreApplication::exec();
    pool.waitForDone();
}

/// A job that waits behind another one is handed over by nothing but Qt's own lock.
void goInTheOrderOfThePool()
{
    std::atomic<bool> isQueued = false;
    QThreadPool pool;
    pool.setMaxThreadCount(1);
    pool.start([&isQueued] { waitFor(isQueued); });
    orderedByStart = 1;
    pool.start([] {
        ++orderedByStart;
        orderedByWaiting = 1;
    });
    isQueued.store(true, std::memory_order_relaxed);
    pool.waitForDone();
    ++orderedByWaiting;
}

/// The first call wakes the loop; the second one finds it awake.
void goInTheOrderOfTheQueue()
{
    QObject receiver;
    QThreadPool pool;
    pool.start([&receiver] {
        QMetaObject::invokeMethod(
            &receiver, [] {}, Qt::QueuedConnection);
        orderedByQueuedCall = 1;
        QMetaObject::invokeMethod(
            &receiver,
            [] {
                ++orderedByQueuedCall;
                QCoreApplication::quit();
            },
            Qt::QueuedConnection);
    });
    QCoreApplication::exec();
    pool.waitForDone();
}

/// A thread that has ended already is not waited for.
void goInTheOrderOfAThread()
{
    orderedByThread = 1;
    const std::unique_ptr<QThread> thread(QThread::create([] { ++orderedByThread; }));
    thread->start();
    while (!thread->isFinished())
        QThread::yieldCurrentThread();
    thread->wait();
    ++orderedByThread;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    raceWithAJob();
    raceWithAnotherPoolsJob();
    raceByCopying(sizeof racedByCopying / static_cast<std::size_t>(argc));
    raceWithAQueuedCall();
    goInTheOrderOfThePool();
    goInTheOrderOfTheQueue();
    goInTheOrderOfAThread();
}
