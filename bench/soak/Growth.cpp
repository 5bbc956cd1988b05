#include "Growth.h"

#include "Failure.h"

#include "desktop/support/Patience.h"

namespace brindlecam::soak {

namespace {

/// Looks at a run until everything has been loaded that is loaded once.
constexpr int kWarm = 12;
/// What may come and go at rest: threads of a pool, a picture kept for a while.
constexpr qint64 kMemory = 32 * 1024; // KiB
constexpr int kDescriptors = 8;
constexpr int kThreads = 8;
constexpr int kWindows = 8;
constexpr int kPictures = 8;
constexpr int kOthers = 40;
constexpr qint64 kPictureBytes = 8 * 1024 * 1024;

bool fits(const Footprint& now, const Footprint& first)
{
    return now.own + now.shared <= first.own + first.shared + kMemory &&
           now.descriptors <= first.descriptors + kDescriptors &&
           now.threads <= first.threads + kThreads &&
           now.held.connections <= first.held.connections + 1 &&
           now.held.windows <= first.held.windows + kWindows &&
           now.held.pictures <= first.held.pictures + kPictures &&
           now.held.others <= first.held.others + kOthers &&
           now.held.pictureBytes <= first.held.pictureBytes + kPictureBytes;
}

} // namespace

void Growth::beginRun(qint64 pid)
{
    if (m_now.looks > kWarm) {
        m_grown += m_now.last.own - m_now.first.own;
        m_grownOver += m_now.looks - kWarm;
    }
    m_pid = pid;
    m_now = {};
    ++m_runs;
}

void Growth::look(qint64 pid, const std::function<Footprint()>& footprint, int patience)
{
    if (pid != m_pid)
        beginRun(pid);
    ++m_now.looks;
    m_now.last = footprint();
    if (m_now.looks <= kWarm)
        m_now.first = m_now.last;
    if (m_now.last.own > m_most.own)
        m_most = m_now.last;
    const auto isGivenBack = [&] {
        m_now.last = footprint();
        return fits(m_now.last, m_now.first);
    };
    const bool isSmall = desktop::waitUntil(isGivenBack, patience);
    require(isSmall, QStringLiteral("the program grows: %1; at the beginning of this run: %2")
                         .arg(m_now.last.text(), m_now.first.text()));
    if (m_now.looks >= m_longest.looks)
        m_longest = m_now;
}

double Growth::paceKibibytes() const
{
    const bool warm = m_now.looks > kWarm;
    const qint64 grown = m_grown + (warm ? m_now.last.own - m_now.first.own : 0);
    const int over = m_grownOver + (warm ? m_now.looks - kWarm : 0);
    return over > 0 ? double(grown) / over : 0;
}

} // namespace brindlecam::soak
