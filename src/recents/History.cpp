#include "recents/History.h"

#include "recents/HistoryNames.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace brindlecam {

namespace {

/// A file beside the final one takes the bytes and is renamed when all are there: a full disk
/// leaves nothing behind, and nobody lists half an entry.
void writeWhole(const QString& path, const QByteArray& data)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    // Where the disk fills up in the middle, write() only says how far it came: no error is set
    // that commit() would mind.
    if (file.write(data) != data.size())
        file.cancelWriting();
    file.commit();
}

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

void History::add(const QByteArray& data, const QString& fileExtension) const
{
    if (data.isEmpty())
        return;
    QDir().mkpath(m_folder);
    writeWhole(path(HistoryNames::nameFor(m_clock(), fileExtension)), data);
    // Another thread may be pruning too: removing what is gone already fails and harms nobody.
    for (const QString& name : HistoryNames::surplus(HistoryNames::entries(fileNames())))
        QFile::remove(path(name));
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
        if (HistoryNames::isUnfinished(name))
            QFile::remove(path(name));
    }
    return static_cast<int>(listed.size());
}

QStringList History::fileNames() const
{
    return QDir(m_folder).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
}

QString History::path(const QString& name) const
{
    return m_folder + QLatin1Char('/') + name;
}

} // namespace brindlecam
