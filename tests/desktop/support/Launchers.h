#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace brindlecam::desktop {

/// Commands for ProgramUnderTest::setLauncher() that make a file system refuse. None needs a
/// privilege: they take one away, or make a world of their own where the tester may do as he likes.
namespace Launchers {

/// Without the right to pass over permissions. Whoever is not root has none and needs no command.
[[nodiscard]] QStringList withoutPrivileges();

/// With a disk of its own below `folder` (which must exist) that has only this many bytes left,
/// beside a file named "relleno". Seen from outside by insideOf(). None where the kernel allows
/// nobody to mount.
[[nodiscard]] std::optional<QStringList> withSmallDisk(const QString& folder, int bytesLeft);

/// Where a path as the process sees it is found from outside.
[[nodiscard]] QString insideOf(qint64 pid, const QString& path);

} // namespace Launchers

} // namespace brindlecam::desktop
