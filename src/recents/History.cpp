#include "recents/History.h"

#include "base/WholeFile.h"
#include "recents/HistoryNames.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace brindlecam {

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
    QDir().mkpath(m_folder);
    const bool added = writeWhole(path(HistoryNames::nameFor(m_clock(), fileExtension)), data);
    // Another thread may be pruning too: removing what is gone already fails and harms nobody.
    for (const QString& name : HistoryNames::surplus(HistoryNames::entries(fileNames())))
        QFile::remove(path(name));
    return added;
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
