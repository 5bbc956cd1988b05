#pragma once

#include "Busy.h"

#include <QString>

#include <atomic>
#include <thread>

namespace brindlecam::bench {

/// Watches how long a process's main thread works without a pause: processor time between two
/// moments in which it waits for something. What other threads take from it does not count.
class Stretches final {
public:
    explicit Stretches(qint64 pid);
    ~Stretches();
    Stretches(const Stretches&) = delete;
    Stretches& operator=(const Stretches&) = delete;

    /// Ends it; milliseconds.
    [[nodiscard]] double longest();

private:
    void watch();

    const Busy m_busy;
    const QString m_status;
    std::atomic<bool> m_on = true;
    double m_longest = 0;
    std::thread m_thread;
};

} // namespace brindlecam::bench
