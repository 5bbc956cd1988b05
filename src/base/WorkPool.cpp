#include "base/WorkPool.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <chrono>
#include <utility>

namespace brindlecam::WorkPool {

namespace {

// Idle threads wake once, to end; soon after the work, not half a minute later.
constexpr std::chrono::milliseconds kIdleThreadLife{2000};

QThreadPool& pool();

void waitForAll()
{
    pool().waitForDone();
}

// Never destroyed: the end of the X server ends the process from inside of Qt.
QThreadPool& pool()
{
    static QThreadPool& threads = []() -> QThreadPool& {
        auto* const made = new QThreadPool;
        made->setExpiryTimeout(static_cast<int>(kIdleThreadLife.count()));
        qAddPostRoutine(waitForAll);
        return *made;
    }();
    return threads;
}

} // namespace

void run(std::function<void()> work)
{
    pool().start(std::move(work));
}

} // namespace brindlecam::WorkPool
