#include "desktop/support/ProcessMemory.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace brindlecam::desktop {

ProcessMemory ProcessMemory::of(qint64 pid)
{
    ProcessMemory memory;
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return memory;
    // Lines such as "RssAnon:     1234 kB".
    for (const QByteArray& line : status.readAll().split('\n')) {
        const QByteArrayList words = line.simplified().split(' ');
        if (words.first() == "RssAnon:")
            memory.own = words.value(1).toLongLong();
        else if (words.first() == "RssShmem:")
            memory.shared = words.value(1).toLongLong();
    }
    return memory;
}

} // namespace brindlecam::desktop
