#include "Rest.h"

#include "desktop/support/ProcessMemory.h"
#include "desktop/support/x11/X11Holdings.h"

#include <QDir>
#include <QFile>

namespace brindlecam::bench {

namespace {

constexpr double kKibibytes = 1024;
constexpr double kMebibyte = 1024 * 1024;

QList<QByteArray> linesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// The number after the name in a line such as "RssAnon:  1234 kB".
std::optional<qint64> value(const QByteArray& line, const char* name)
{
    if (!line.startsWith(QByteArray(name) + ':'))
        return {};
    return line.mid(line.indexOf(':') + 1).simplified().split(' ').first().toLongLong();
}

} // namespace

Rest::Rest(const QString& display, qint64 pid)
    : m_connection(display)
    , m_pid(pid)
{
}

Rest::Switches Rest::switches() const
{
    Switches found;
    const QString tasks = QStringLiteral("/proc/%1/task").arg(m_pid);
    for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        qint64 all = 0;
        QByteArray name;
        for (const QByteArray& line : linesOf(QStringLiteral("%1/%2/status").arg(tasks, task))) {
            if (line.startsWith("Name:"))
                name = line.mid(5).trimmed();
            for (const char* kind : {"voluntary_ctxt_switches", "nonvoluntary_ctxt_switches"})
                all += value(line, kind).value_or(0);
        }
        found.insert(task.toLatin1() + ' ' + name, all);
    }
    return found;
}

qint64 Rest::between(const Switches& before, const Switches& after)
{
    qint64 all = 0;
    for (auto thread = after.begin(); thread != after.end(); ++thread)
        all += thread.value() - before.value(thread.key(), 0);
    for (auto thread = before.begin(); thread != before.end(); ++thread) {
        // It woke up to end.
        if (!after.contains(thread.key()))
            ++all;
    }
    return all;
}

Rest::Memory Rest::memory() const
{
    const auto told = desktop::ProcessMemory::of(m_pid);
    Memory memory;
    memory.anonymous = double(told.own) / kKibibytes;
    memory.shared = double(told.shared) / kKibibytes;
    memory.segments = untouchedSegmentMebibytes();
    memory.pixmaps = pixmapMebibytes();
    return memory;
}

double Rest::untouchedSegmentMebibytes() const
{
    double mebibytes = 0;
    bool segment = false;
    for (const QByteArray& line : linesOf(QStringLiteral("/proc/%1/smaps").arg(m_pid))) {
        // A mapping begins with its addresses; what follows about it begins with a capital.
        if (!line.isEmpty() && !(line.at(0) >= 'A' && line.at(0) <= 'Z'))
            segment =
                line.contains("/memfd:") || line.contains("/SYSV") || line.contains("/dev/shm/");
        if (!segment)
            continue;
        mebibytes += double(value(line, "Size").value_or(0)) / kKibibytes;
        mebibytes -= double(value(line, "Rss").value_or(0)) / kKibibytes;
    }
    return mebibytes;
}

double Rest::pixmapMebibytes() const
{
    return double(desktop::holdingsOf(m_connection, m_pid).pictureBytes) / kMebibyte;
}

} // namespace brindlecam::bench
