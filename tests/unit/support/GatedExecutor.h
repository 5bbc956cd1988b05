#pragma once

#include "base/Executor.h"

#include <QCoreApplication>

#include <deque>
#include <utility>

namespace brindlecam::test {

/// Delivers what is posted, and what is posted by that: Qt leaves the latter for the next time.
inline void sendAllPostedEvents()
{
    constexpr int kMostHops = 4; // more than any answer takes
    for (int i = 0; i < kMostHops; ++i)
        QCoreApplication::sendPostedEvents();
}

/// Holds work back until the test lets it run, in the order the test wants.
class GatedExecutor final {
public:
    std::deque<std::function<void()>> jobs;

    [[nodiscard]] Executor executor()
    {
        return [this](std::function<void()> job) { jobs.push_back(std::move(job)); };
    }

    /// Runs one waiting job, counted from the oldest.
    void run(std::size_t index)
    {
        const auto job = std::move(jobs.at(index));
        jobs.erase(jobs.begin() + static_cast<std::ptrdiff_t>(index));
        job();
    }
};

} // namespace brindlecam::test
