#include "recents/HistoryNames.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace brindlecam::HistoryNames {

QString nameFor(const QDateTime& localTime, const QString& fileExtension)
{
    return localTime.toString(QStringLiteral("yyyyMMdd-HHmmss-zzz")) + QLatin1Char('.') +
           fileExtension;
}

bool isEntry(const QString& name)
{
    // A dot at the very start hides a file; what follows is its name and no extension.
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot <= 0)
        return false;
    const QStringView extension = QStringView(name).mid(dot + 1);
    return extension == QLatin1String("png") || extension == QLatin1String("gif");
}

bool isUnfinished(const QString& name)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(
        QStringLiteral("[0-9]{8}-[0-9]{6}-[0-9]{3}\\.(png|gif)\\.[A-Za-z]{6}")));
    return pattern.match(name).hasMatch();
}

QStringList entries(const QStringList& names)
{
    QStringList kept;
    std::copy_if(names.begin(), names.end(), std::back_inserter(kept), isEntry);
    std::stable_sort(kept.begin(), kept.end(),
                     [](const QString& a, const QString& b) { return a > b; });
    return kept;
}

QStringList surplus(const QStringList& entries)
{
    return entries.mid(kMostEntries);
}

} // namespace brindlecam::HistoryNames
