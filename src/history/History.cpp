#include "history/History.h"

#include "base/UnfinishedFiles.h"
#include "base/WholeFile.h"
#include "history/HistoryNames.h"
#include "pictures/TiffWriter.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QLockFile>
#include <QStandardPaths>

#include <chrono>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kLockPatience{2000};
constexpr QSize kThumbnailSize(History::kThumbnailPixels, History::kThumbnailPixels);

/// Whether Qt would decode it, as far as its beginning tells: no file that asks for more memory
/// than QImageReader allows.
bool canBeDecoded(const QByteArray& png)
{
    QBuffer buffer;
    buffer.setData(png);
    QImageReader reader(&buffer, "PNG");
    if (!reader.canRead())
        return false;
    const QSize size = reader.size();
    const qint64 bits = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    constexpr qint64 kBitsPerMegabyte = 8 << 20;
    const qint64 megabytes = bits * size.width() * size.height() / kBitsPerMegabyte;
    return !size.isEmpty() && bits > 0 && megabytes <= QImageReader::allocationLimit();
}

} // namespace

History::History(Folders folders, Clock clock)
    : m_folder(std::move(folders.entries))
    , m_thumbnails(std::move(folders.thumbnails))
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

bool History::add(const QByteArray& data, const QString& fileExtension, const QImage& picture) const
{
    const std::optional<QString> item = store(data, fileExtension);
    const auto stamp = item ? ThumbnailCache::stampOf(*item) : std::nullopt;
    if (const auto small = stamp ? Thumbnail::of(picture, kThumbnailSize) : std::nullopt)
        m_thumbnails.store(*item, *stamp, kThumbnailSize, *small);
    return item.has_value();
}

std::optional<QString> History::store(const QByteArray& data, const QString& fileExtension) const
{
    if (data.isEmpty())
        return std::nullopt;
    // One after another: each name comes after the newest there is.
    const std::lock_guard lock(m_adding);
    makeOwnFolder(m_folder);
    // Another copy of the program may be choosing a name, too. One that hangs costs no capture.
    QLockFile copies(path(QStringLiteral(".brindlecam.lock")));
    (void)copies.tryLock(static_cast<int>(kLockPatience.count()));
    const QString name =
        HistoryNames::nextName(m_clock(), HistoryNames::entries(fileNames()), fileExtension);
    const bool added = writeWhole(path(name), data, Readers::ownerOnly);
    prune(name);
    return added ? std::optional(path(name)) : std::nullopt;
}

// Another copy of the program may be pruning too: removing what is gone already fails and harms
// nobody.
void History::prune(const QString& added) const
{
    const QStringList surplus = HistoryNames::surplus(HistoryNames::entries(fileNames()), added);
    for (const QString& old : surplus)
        QFile::remove(path(old));
    if (!surplus.isEmpty())
        m_thumbnails.prune(items());
}

void History::tidy() const
{
    // What a link of the user's leads to is shared as the user likes.
    if (!QFileInfo(m_folder).isSymLink())
        keepFromOthers(m_folder);
    for (const QString& item : items())
        keepFromOthers(item);
    UnfinishedFiles::removeAbandoned(m_folder, m_clock());
    m_thumbnails.prune(items());
    UnfinishedFiles::removeAbandoned(m_thumbnails.folder(), m_clock());
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
    const QStringList listed = HistoryNames::entries(fileNames());
    for (const QString& name : listed)
        QFile::remove(path(name));
    // Pictures the user wants gone must not survive in what a killed program left half written.
    UnfinishedFiles::removeAll(m_folder);
    m_thumbnails.clear();
    return static_cast<int>(listed.size());
}

void History::remove(const QString& item) const
{
    if (items().contains(item))
        QFile::remove(item);
    m_thumbnails.prune(items());
}

std::optional<Thumbnail> History::thumbnail(const QString& item, QSize most,
                                            const Executor& keeping) const
{
    const auto stamp = ThumbnailCache::stampOf(item);
    if (!stamp)
        return std::nullopt;
    const Item asked{item, *stamp};
    if (auto there = kept(asked, most, keeping))
        return there;
    const auto large = Thumbnail::ofFile(item, kThumbnailSize);
    if (!large)
        return std::nullopt;
    keep(*large, asked, kThumbnailSize, keeping);
    return madeOf(*large, asked, most, keeping);
}

std::optional<Thumbnail> History::keptThumbnail(const QString& item, QSize most,
                                                const Executor& keeping) const
{
    const auto stamp = ThumbnailCache::stampOf(item);
    return stamp ? kept({item, *stamp}, most, keeping) : std::nullopt;
}

// Drawers ask for the same size again and again: a small file is read in a tenth of the time that
// the large one takes.
std::optional<Thumbnail> History::kept(const Item& item, QSize most, const Executor& keeping) const
{
    if (auto same = m_thumbnails.load(item.path, item.stamp, most.boundedTo(kThumbnailSize)))
        return same;
    const auto large = m_thumbnails.load(item.path, item.stamp, kThumbnailSize);
    return large ? madeOf(*large, item, most, keeping) : std::nullopt;
}

std::optional<Thumbnail> History::madeOf(const Thumbnail& large, const Item& item, QSize most,
                                         const Executor& keeping) const
{
    const QSize bounded = most.boundedTo(kThumbnailSize);
    if (bounded == kThumbnailSize)
        return large;
    auto small = Thumbnail::of(large.image, bounded);
    if (!small)
        return std::nullopt;
    small->pixels = large.pixels;
    keep(*small, item, bounded, keeping);
    return small;
}

void History::keep(const Thumbnail& thumbnail, const Item& item, QSize most,
                   const Executor& keeping) const
{
    keeping([cache = m_thumbnails, item, most, thumbnail] {
        cache.store(item.path, item.stamp, most, thumbnail);
    });
}

std::optional<ClipboardContent> History::clipboardContent(const QString& item)
{
    QFile file(item);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    const std::optional<QByteArray> bytes = readWhole(file);
    if (!bytes || bytes->isEmpty())
        return std::nullopt;
    if (item.endsWith(QStringLiteral(".gif")))
        return ClipboardContent::gif(*bytes, item);
    if (!canBeDecoded(*bytes))
        return ClipboardContent::picture(*bytes, nullptr);
    return ClipboardContent::picture(*bytes, [png = *bytes] {
        const QImage image = QImage::fromData(png, "PNG");
        return TiffWriter::encode(image, image.dotsPerMeterX());
    });
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
