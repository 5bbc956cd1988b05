#pragma once

#include <QtGlobal>

namespace brindlecam::bench {

/// Processor time a process has taken so far, as the kernel counts it.
class Busy final {
public:
    explicit Busy(qint64 pid);

    /// Milliseconds of the main thread, which all windows wait for.
    [[nodiscard]] double mainThread() const;
    /// Milliseconds of all threads that live now.
    [[nodiscard]] double allThreads() const;

private:
    const qint64 m_pid;
};

} // namespace brindlecam::bench
