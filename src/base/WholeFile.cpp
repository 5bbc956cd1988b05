#include "base/WholeFile.h"

#include "base/UnfinishedFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace brindlecam {

namespace {

constexpr QFile::Permissions kOwnersFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions kOwner = kOwnersFile | QFile::ExeOwner;
constexpr QFile::Permissions kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                       QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
constexpr qint64 kChunk = 64 * 1024;

bool openAnew(QFile& file, Readers readers)
{
    // New, so that no link somebody has put there is followed; unbuffered, so that write() itself
    // meets the full disk.
    constexpr auto mode = QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered;
    return readers == Readers::ownerOnly ? file.open(mode, kOwnersFile) : file.open(mode);
}

/// Some disks only notice here that they are full.
bool reachesTheDisk(const QFile& file)
{
    while (fsync(file.handle()) != 0) {
        if (errno != EINTR)
            return errno == EINVAL || errno == ENOTSUP; // this kind of disk cannot be asked
    }
    return true;
}

bool renameOver(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::rename(QFileInfo(from).filesystemFilePath(),
                            QFileInfo(to).filesystemFilePath(), error);
    return !error;
}

} // namespace

bool writeWhole(const QString& path, const QByteArray& bytes, Readers readers)
{
    const QFileInfo existing(path);
    const bool replacesFile = !existing.isSymLink() && existing.exists();
    if (replacesFile && !(existing.isFile() && existing.isWritable()))
        return false;

    QFile file(existing.path() + QLatin1Char('/') + UnfinishedFiles::newName());
    if (!openAnew(file, readers))
        return false;
    // The umask may have taken too much. Where there are no permissions, none are needed.
    if (readers == Readers::ownerOnly)
        file.setPermissions(kOwnersFile);
    else if (replacesFile)
        file.setPermissions(existing.permissions() & (kOwner | kOthers));

    const bool whole = file.write(bytes) == bytes.size() && reachesTheDisk(file);
    file.close();
    if (whole && file.error() == QFile::NoError && renameOver(file.fileName(), path))
        return true;
    file.remove();
    return false;
}

void keepFromOthers(const QString& path)
{
    const QFile::Permissions all = QFile::permissions(path);
    if (all & kOthers)
        QFile::setPermissions(path, all & kOwner);
}

void makeOwnFolder(const QString& path)
{
    constexpr auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    if (QFileInfo::exists(path))
        return;
    QDir().mkpath(QFileInfo(path).path());
    if (QDir().mkdir(path, owner))
        QFile::setPermissions(path, owner); // the umask may have taken too much
}

std::optional<QByteArray> readWhole(QIODevice& file)
{
    QByteArray bytes;
    for (;;) {
        const qsizetype before = bytes.size();
        bytes.resize(before + kChunk);
        const qint64 count = file.read(bytes.data() + before, kChunk);
        if (count < 0)
            return std::nullopt;
        bytes.resize(before + count);
        if (count == 0)
            return bytes;
    }
}

} // namespace brindlecam
