#include "Busy.h"

#include <QDir>
#include <QFile>

namespace brindlecam::bench {

namespace {

constexpr double kNanoseconds = 1e6; // per millisecond

/// Of one thread; 0 when it has ended.
double milliseconds(const QString& task)
{
    QFile file(task + QStringLiteral("/schedstat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').first().toDouble() / kNanoseconds;
}

} // namespace

Busy::Busy(qint64 pid)
    : m_pid(pid)
{
}

double Busy::mainThread() const
{
    return milliseconds(QStringLiteral("/proc/%1/task/%1").arg(m_pid));
}

double Busy::allThreads() const
{
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(m_pid));
    double all = 0;
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        all += milliseconds(tasks.filePath(task));
    return all;
}

} // namespace brindlecam::bench
