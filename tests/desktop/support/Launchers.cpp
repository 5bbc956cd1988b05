#include "desktop/support/Launchers.h"

#include "desktop/support/Patience.h"

#include <QProcess>

#include <unistd.h>

namespace brindlecam::desktop::Launchers {

namespace {

bool isRoot()
{
    return ::geteuid() == 0;
}

bool works(QStringList command)
{
    const QString program = command.takeFirst();
    QProcess process;
    process.start(program, command + QStringList(QStringLiteral("true")));
    return process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace

QStringList withoutPrivileges()
{
    if (!isRoot())
        return {};
    return {QStringLiteral("setpriv"), QStringLiteral("--bounding-set"), QStringLiteral("-all"),
            QStringLiteral("--inh-caps"), QStringLiteral("-all")};
}

std::optional<QStringList> withSmallDisk(const QString& folder, int bytesLeft)
{
    constexpr int kPage = 4096; // a small disk counts in pages
    constexpr int kFilled = 16 * kPage;
    const QString script = QStringLiteral("mount -t tmpfs -o size=%1 tmpfs \"$0\" && "
                                          "head -c %2 /dev/zero > \"$0/relleno\" && exec \"$@\"")
                               .arg(kFilled + (bytesLeft + kPage - 1) / kPage * kPage)
                               .arg(kFilled);
    QStringList command{QStringLiteral("unshare"), QStringLiteral("--mount")};
    if (!isRoot())
        command << QStringLiteral("--map-root-user");
    command << QStringLiteral("sh") << QStringLiteral("-c") << script << folder;
    return works(command) ? std::optional(command) : std::nullopt;
}

QString insideOf(qint64 pid, const QString& path)
{
    return QStringLiteral("/proc/%1/root%2").arg(pid).arg(path);
}

} // namespace brindlecam::desktop::Launchers
