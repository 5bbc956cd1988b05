#include "MostMemory.h"

#include "desktop/support/ProcessMemory.h"

#include <algorithm>
#include <chrono>

namespace brindlecam::bench {

namespace {

constexpr double kKibibytes = 1024; // per MiB
constexpr std::chrono::milliseconds kBetweenLooks{3};

} // namespace

MostMemory::MostMemory(qint64 pid)
    : m_pid(pid)
    , m_before(desktop::ProcessMemory::of(pid).own)
    , m_most(m_before)
    , m_thread([this] {
        while (!m_ends) {
            m_most = std::max(m_most.load(), desktop::ProcessMemory::of(m_pid).own);
            std::this_thread::sleep_for(kBetweenLooks);
        }
    })
{
}

MostMemory::~MostMemory()
{
    m_ends = true;
    m_thread.join();
}

double MostMemory::growth() const
{
    return double(m_most - m_before) / kKibibytes;
}

} // namespace brindlecam::bench
