#include "Stretches.h"

#include <QFile>

#include <algorithm>
#include <chrono>

namespace brindlecam::bench {

namespace {

constexpr std::chrono::microseconds kBetween{500};

/// How often a thread has waited for something so far; -1 when it has ended.
qint64 pausesOf(const QString& status)
{
    QFile file(status);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray all = file.readAll();
    const QByteArray label = "\nvoluntary_ctxt_switches:";
    const qsizetype at = all.indexOf(label);
    const qsizetype end = all.indexOf('\n', at + 1);
    return at < 0 ? -1 : all.mid(at + label.size(), end - at - label.size()).trimmed().toLongLong();
}

} // namespace

Stretches::Stretches(qint64 pid)
    : m_busy(pid)
    , m_status(QStringLiteral("/proc/%1/task/%1/status").arg(pid))
    , m_thread([this] { watch(); })
{
}

Stretches::~Stretches()
{
    (void)longest();
}

double Stretches::longest()
{
    m_on = false;
    if (m_thread.joinable())
        m_thread.join();
    return m_longest;
}

// A stretch begins and ends between two looks: it counts as long as it can have been.
void Stretches::watch()
{
    qint64 pauses = pausesOf(m_status);
    double begun = m_busy.mainThread();
    while (m_on) {
        std::this_thread::sleep_for(kBetween);
        const qint64 pausesNow = pausesOf(m_status);
        const double now = m_busy.mainThread();
        m_longest = std::max(m_longest, now - begun);
        if (pausesNow != pauses) {
            pauses = pausesNow;
            begun = now;
        }
    }
}

} // namespace brindlecam::bench
