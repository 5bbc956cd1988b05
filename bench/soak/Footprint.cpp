#include "Footprint.h"

#include "desktop/support/Desktop.h"
#include "desktop/support/ProcessMemory.h"

#include <QDir>

namespace brindlecam::soak {

namespace {

constexpr qint64 kKibi = 1024;

/// How many entries a folder of /proc has, links to nowhere included.
int entries(const QString& folder, QDir::Filters kind)
{
    return static_cast<int>(
        QDir(folder).entryList(kind | QDir::System | QDir::NoDotAndDotDot).size());
}

} // namespace

Footprint Footprint::of(const desktop::Desktop& desktop, qint64 pid)
{
    const QString folder = QStringLiteral("/proc/%1").arg(pid);
    const auto memory = desktop::ProcessMemory::of(pid);
    Footprint now;
    now.own = memory.own;
    now.shared = memory.shared;
    now.threads = entries(folder + QStringLiteral("/task"), QDir::Dirs);
    now.descriptors = entries(folder + QStringLiteral("/fd"), QDir::Files);
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
