#pragma once

#include <QtGlobal>

#include <atomic>
#include <thread>

namespace brindlecam::bench {

/// Watches on a thread of its own how much private memory a process has, until it is asked.
class MostMemory final {
public:
    explicit MostMemory(qint64 pid);
    ~MostMemory();
    MostMemory(const MostMemory&) = delete;
    MostMemory& operator=(const MostMemory&) = delete;

    /// The most that was seen so far beyond what there was at first. MiB.
    [[nodiscard]] double growth() const;

private:
    const qint64 m_pid;
    const qint64 m_before; ///< KiB
    std::atomic<qint64> m_most;
    std::atomic<bool> m_ends = false;
    std::thread m_thread; ///< last: it uses the rest
};

} // namespace brindlecam::bench
