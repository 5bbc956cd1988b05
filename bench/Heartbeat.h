#pragma once

#include "desktop/support/ProgramUnderTest.h"

#include <atomic>
#include <thread>

namespace brindlecam::bench {

/// Asks the program something small again and again, which its main thread answers, and knows the
/// longest time that an answer took: so long has that thread been busy with something else.
class Heartbeat final {
public:
    explicit Heartbeat(const desktop::ProgramUnderTest& program);
    ~Heartbeat();
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;

    /// Ends it; milliseconds.
    [[nodiscard]] double longest();

private:
    void beat();

    const desktop::ProgramUnderTest& m_program;
    std::atomic<bool> m_on = true;
    double m_longest = 0;
    std::thread m_thread;
};

} // namespace brindlecam::bench
