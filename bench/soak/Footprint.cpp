#include "Footprint.h"

#include "desktop/support/Desktop.h"

#include <QDir>
#include <QFile>

namespace brindlecam::soak {

namespace {

constexpr qint64 kKibi = 1024;

/// The number after a name in the kernel's words about a process, as in "Threads:  3".
qint64 number(const QByteArray& status, const char* name)
{
    const qsizetype at = status.indexOf(QByteArray(name) + ':');
    const QByteArray line = status.mid(at, status.indexOf('\n', at) - at);
    return at < 0 ? 0
                  : line.mid(line.indexOf(':') + 1).simplified().split(' ').first().toLongLong();
}

} // namespace

Footprint Footprint::of(const desktop::Desktop& desktop, qint64 pid)
{
    const QString folder = QStringLiteral("/proc/%1").arg(pid);
    QFile file(folder + QStringLiteral("/status"));
    const QByteArray status = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    Footprint now;
    now.own = number(status, "RssAnon");
    now.shared = number(status, "RssShmem");
    now.threads = static_cast<int>(number(status, "Threads"));
    now.descriptors = static_cast<int>(
        QDir(folder + QStringLiteral("/fd")).entryList(QDir::Files | QDir::System).size());
    now.held = desktop.holdings(pid);
    return now;
}

QString Footprint::text() const
{
    return QStringLiteral("%1 MiB, %2 MiB shared, %3 descriptors, %4 threads; with the window "
                          "system %5 connections, %6 windows, %7 pictures of %8 MiB, %9 others")
        .arg(double(own) / kKibi, 0, 'f', 1)
        .arg(double(shared) / kKibi, 0, 'f', 1)
        .arg(descriptors)
        .arg(threads)
        .arg(held.connections)
        .arg(held.windows)
        .arg(held.pictures)
        .arg(double(held.pictureBytes) / kKibi / kKibi, 0, 'f', 1)
        .arg(held.others);
}

} // namespace brindlecam::soak
