#include "desktop/support/PrivateFolders.h"

#include <QDir>
#include <QFile>

namespace brindlecam::desktop {

PrivateFolders::PrivateFolders(const QString& home)
    : m_home(home.isEmpty() ? m_root.path() : home)
{
    for (const char* folder : {"config", "data", "cache", "state", "Pictures"})
        QDir().mkpath(inside(folder));
    QDir().mkpath(runtime());
    QFile::setPermissions(runtime(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void PrivateFolders::addTo(QProcessEnvironment& environment) const
{
    environment.insert(QStringLiteral("HOME"), home());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), inside("config"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), inside("data"));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), inside("cache"));
    environment.insert(QStringLiteral("XDG_STATE_HOME"), inside("state"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime());
}

QString PrivateFolders::inside(const char* path) const
{
    return QDir(m_home).filePath(QString::fromLatin1(path));
}

} // namespace brindlecam::desktop
