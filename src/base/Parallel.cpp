#include "base/Parallel.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <atomic>

namespace brindlecam {

void inParallel(int count, const std::function<void(int)>& work)
{
    std::atomic<int> next = 0;
    QSemaphore done;
    const auto takeTurns = [&] {
        for (int turn = next++; turn < count; turn = next++)
            work(turn);
    };
    const int wanted = std::min(count, QThread::idealThreadCount()) - 1;
    int helpers = 0;
    while (helpers < wanted && QThreadPool::globalInstance()->tryStart([&] {
        takeTurns();
        done.release();
    }))
        ++helpers;
    takeTurns();
    done.acquire(helpers);
}

} // namespace brindlecam
