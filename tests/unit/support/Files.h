#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>

#include <sys/stat.h>

namespace brindlecam::test {

/// What is in a file; "unreadable" where that can't be told.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Makes or overwrites a file by hand; its folder must exist.
inline void put(const QString& path, const QByteArray& content = "by hand")
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

/// The permission bits, links followed; -1 where nothing is.
inline int modeOf(const QString& path)
{
    struct stat status {};
    return stat(qUtf8Printable(path), &status) == 0 ? static_cast<int>(status.st_mode & 07777) : -1;
}

inline void setMode(const QString& path, int mode)
{
    if (chmod(qUtf8Printable(path), static_cast<mode_t>(mode)) != 0)
        qFatal("%s keeps its permissions", qPrintable(path));
}

/// Names of all files, hidden ones and links included.
inline QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

/// While it lives, new files get no more permissions than this leaves.
class Umask final {
public:
    explicit Umask(int mask)
        : m_before(umask(static_cast<mode_t>(mask)))
    {
    }
    ~Umask() { umask(m_before); }
    Q_DISABLE_COPY_MOVE(Umask)

private:
    mode_t m_before;
};

} // namespace brindlecam::test
