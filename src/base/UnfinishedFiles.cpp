#include "base/UnfinishedFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <chrono>

#include <unistd.h>

namespace brindlecam::UnfinishedFiles {

namespace {

constexpr int kDigits = 13; // 64 bits
constexpr int kBase = 36;
// No write takes that long, not even on a slow disk of another machine.
constexpr std::chrono::hours kAbandoned{1};

QFileInfoList unfinished(const QString& folder)
{
    QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral(".brindlecam-*.part")},
                                   QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Unsorted);
    files.removeIf([](const QFileInfo& file) { return !isName(file.fileName()); });
    return files;
}

} // namespace

QString newName()
{
    return QStringLiteral(".brindlecam-%1.part")
        .arg(QRandomGenerator::system()->generate64(), kDigits, kBase, QLatin1Char('0'));
}

bool isName(const QString& name)
{
    // Never destroyed: other threads may ask while the program ends.
    static const auto& pattern = *new QRegularExpression(QRegularExpression::anchoredPattern(
        QStringLiteral("\\.brindlecam-[0-9a-z]{%1}\\.part").arg(kDigits)));
    return pattern.match(name).hasMatch();
}

void removeAbandoned(const QString& folder, const QDateTime& now)
{
    for (const QFileInfo& file : unfinished(folder)) {
        if (file.ownerId() == geteuid() && file.lastModified().addDuration(kAbandoned) < now)
            QFile::remove(file.filePath());
    }
}

void removeAll(const QString& folder)
{
    for (const QFileInfo& file : unfinished(folder))
        QFile::remove(file.filePath());
}

} // namespace brindlecam::UnfinishedFiles
