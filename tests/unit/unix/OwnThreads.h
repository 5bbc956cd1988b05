#pragma once

#include <QDir>
#include <QSet>
#include <QString>

namespace brindlecam::test {

/// The threads of this process by their numbers, whoever started them.
inline QSet<QString> ownThreads()
{
    const QStringList names =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return {names.begin(), names.end()};
}

} // namespace brindlecam::test
