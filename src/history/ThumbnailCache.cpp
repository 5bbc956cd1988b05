#include "history/ThumbnailCache.h"

#include "base/UnfinishedFiles.h"
#include "base/WholeFile.h"
#include "history/HistoryNames.h"
#include "pictures/PngWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

#include <utility>

namespace brindlecam {

namespace {

/// What a file's name tells.
struct Label {
    QString entry; ///< file name
    ThumbnailCache::Stamp stamp;
    QSize pixels; ///< of the entry's picture
    QSize most;   ///< of the thumbnail
};

/// "20260314-092653-589.png.48213-1773476813589-1920x1080-194x114.png".
QString nameOf(const Label& label)
{
    return QStringLiteral("%1.%2-%3-%4x%5-%6x%7.png")
        .arg(label.entry)
        .arg(label.stamp.bytes)
        .arg(label.stamp.milliseconds)
        .arg(label.pixels.width())
        .arg(label.pixels.height())
        .arg(label.most.width())
        .arg(label.most.height());
}

std::optional<Label> labelOf(const QString& name)
{
    // Never destroyed, as names are read on threads that may outlive what is.
    static const auto& pattern = *new QRegularExpression(QRegularExpression::anchoredPattern(
        QStringLiteral("(.+)\\.([0-9]{1,15})-(-?[0-9]{1,15})-([0-9]{1,7})x([0-9]{1,7})"
                       "-([0-9]{1,4})x([0-9]{1,4})\\.png")));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch() || !HistoryNames::isEntry(match.captured(1)))
        return std::nullopt;
    return Label{match.captured(1),
                 {match.captured(2).toLongLong(), match.captured(3).toLongLong()},
                 {match.captured(4).toInt(), match.captured(5).toInt()},
                 {match.captured(6).toInt(), match.captured(7).toInt()}};
}

QString fileName(const QString& path)
{
    return QFileInfo(path).fileName();
}

} // namespace

ThumbnailCache::ThumbnailCache(QString folder)
    : m_folder(std::move(folder))
{
}

QString ThumbnailCache::standardFolder()
{
    const QString parent = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return parent.isEmpty() ? QString() : parent + QStringLiteral("/brindlecam/thumbnails");
}

std::optional<ThumbnailCache::Stamp> ThumbnailCache::stampOf(const QString& entry)
{
    const QFileInfo info(entry);
    if (!info.isFile())
        return std::nullopt;
    return Stamp{info.size(), info.lastModified().toMSecsSinceEpoch()};
}

QStringList ThumbnailCache::fileNames() const
{
    return m_folder.isEmpty()
               ? QStringList()
               : QDir(m_folder).entryList(QDir::Files | QDir::NoSymLinks, QDir::Unsorted);
}

std::optional<Thumbnail> ThumbnailCache::load(const QString& entry, const Stamp& stamp,
                                              QSize most) const
{
    const QString wanted = fileName(entry);
    for (const QString& name : fileNames()) {
        if (!name.startsWith(wanted))
            continue;
        const auto label = labelOf(name);
        if (!label || label->entry != wanted || label->stamp != stamp || label->most != most ||
            label->pixels.isEmpty())
            continue;
        auto kept = Thumbnail::ofFile(m_folder + QLatin1Char('/') + name, most);
        if (!kept)
            continue;
        kept->pixels = label->pixels;
        return kept;
    }
    return std::nullopt;
}

void ThumbnailCache::store(const QString& entry, const Stamp& stamp, QSize most,
                           const Thumbnail& thumbnail) const
{
    if (m_folder.isEmpty() || stampOf(entry) != stamp)
        return;
    makeOwnFolder(m_folder);
    const QString kept = nameOf({fileName(entry), stamp, thumbnail.pixels, most});
    const QString path = m_folder + QLatin1Char('/') + kept;
    const QByteArray png =
        PngWriter::encode(thumbnail.image, {.effort = PngWriter::Effort::quick, .cancelled = {}});
    if (png.isEmpty() || !writeWhole(path, png, Readers::ownerOnly))
        return;
    // Once more: whoever removes an entry looks for its thumbnails last.
    if (stampOf(entry) != stamp) {
        QFile::remove(path);
        return;
    }
    for (const QString& name : fileNames()) {
        const auto label = labelOf(name);
        const bool isStale = label && (label->stamp != stamp || label->most == most);
        if (isStale && label->entry == fileName(entry) && name != kept)
            QFile::remove(m_folder + QLatin1Char('/') + name);
    }
}

void ThumbnailCache::prune(const QStringList& entries) const
{
    QSet<QString> stay;
    for (const QString& entry : entries)
        stay.insert(fileName(entry));
    for (const QString& name : fileNames()) {
        const auto label = labelOf(name);
        if (label && !stay.contains(label->entry))
            QFile::remove(m_folder + QLatin1Char('/') + name);
    }
}

void ThumbnailCache::clear() const
{
    prune({});
    if (!m_folder.isEmpty())
        UnfinishedFiles::removeAll(m_folder);
}

} // namespace brindlecam
