#include "Heartbeat.h"

#include "Eyes.h"

#include <algorithm>
#include <chrono>

namespace brindlecam::bench {

namespace {

/// Of a version that no program has: it is answered without looking at the rest.
const QByteArray kQuestion = "0 ?\n";
constexpr std::chrono::milliseconds kBetween{1};

} // namespace

Heartbeat::Heartbeat(const desktop::ProgramUnderTest& program)
    : m_program(program)
    , m_thread([this] { beat(); })
{
}

Heartbeat::~Heartbeat()
{
    (void)longest();
}

double Heartbeat::longest()
{
    m_on = false;
    if (m_thread.joinable())
        m_thread.join();
    return m_longest;
}

void Heartbeat::beat()
{
    while (m_on) {
        const auto asked = Clock::now();
        if (m_program.answerTo(kQuestion) < 0)
            qFatal("the program does not answer");
        m_longest = std::max(m_longest, millisecondsBetween(asked, Clock::now()));
        std::this_thread::sleep_for(kBetween);
    }
}

} // namespace brindlecam::bench
