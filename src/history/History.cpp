#include "history/History.h"

#include "base/UnfinishedFiles.h"
#include "base/WholeFile.h"
#include "history/HistoryNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <chrono>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kLockPatience{2000};

} // namespace

History::History(QString folder, Clock clock)
    : m_folder(std::move(folder))
    , m_clock(std::move(clock))
{
}

QString History::standardFolder()
{
    QString parent = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (parent.isEmpty())
        parent = QDir::tempPath();
    return parent + QStringLiteral("/Brindlecam/Recientes");
}

bool History::add(const QByteArray& data, const QString& fileExtension) const
{
    if (data.isEmpty())
        return false;
    // One after another: each name comes after the newest there is.
    const std::lock_guard lock(m_adding);
    makeFolder();
    // Another copy of the program may be choosing a name, too. One that hangs costs no capture.
    QLockFile copies(path(QStringLiteral(".brindlecam.lock")));
    (void)copies.tryLock(static_cast<int>(kLockPatience.count()));
    const QString name =
        HistoryNames::nextName(m_clock(), HistoryNames::entries(fileNames()), fileExtension);
    const bool added = writeWhole(path(name), data, Readers::ownerOnly);
    // Another copy of the program may be pruning too: removing what is gone already fails and harms
    // nobody.
    for (const QString& old : HistoryNames::surplus(HistoryNames::entries(fileNames()), name))
        QFile::remove(path(old));
    return added;
}

void History::makeFolder() const
{
    constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    if (QFileInfo::exists(m_folder))
        return;
    QDir().mkpath(QFileInfo(m_folder).path());
    if (QDir().mkdir(m_folder, ownerOnly))
        QFile::setPermissions(m_folder, ownerOnly); // the umask may have taken too much
}

void History::tidy() const
{
    // What a link of the user's leads to is shared as the user likes.
    if (!QFileInfo(m_folder).isSymLink())
        keepFromOthers(m_folder);
    for (const QString& item : items())
        keepFromOthers(item);
    UnfinishedFiles::removeAbandoned(m_folder, m_clock());
}

QStringList History::items() const
{
    QStringList paths = HistoryNames::entries(fileNames());
    for (QString& name : paths)
        name = path(name);
    return paths;
}

int History::clear() const
{
    const QStringList all = fileNames();
    const QStringList listed = HistoryNames::entries(all);
    for (const QString& name : listed)
        QFile::remove(path(name));
    // Pictures the user wants gone must not survive in what a killed program left half written.
    for (const QString& name : all) {
        if (UnfinishedFiles::isName(name))
            QFile::remove(path(name));
    }
    return static_cast<int>(listed.size());
}

QStringList History::fileNames() const
{
    return QDir(m_folder).entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Unsorted);
}

QString History::path(const QString& name) const
{
    return m_folder + QLatin1Char('/') + name;
}

} // namespace brindlecam
