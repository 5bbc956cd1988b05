#include "HistoryModel.h"

#include "Promise.h"
#include "history/History.h"
#include "unit/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>

#include <unistd.h>

namespace brindlecam::fuzz {

namespace {

constexpr int kMostEntries = 20;
constexpr int kOwnersFile = 0600;
constexpr int kOwnersFolder = 0700;
constexpr int kOwner = 0700;
constexpr int kLastYear = 9999;
constexpr int kLongestName = 255; // bytes
constexpr std::chrono::hours kAbandoned{1};
constexpr int kStampLength = 19; // yyyyMMdd-HHmmss-zzz
constexpr int kPartLetters = 13;
const QString kPartStart = QStringLiteral(".brindlecam-");
const QString kPartEnd = QStringLiteral(".part");
const QString kStamp = QStringLiteral("yyyyMMdd-HHmmss-zzz");
const QByteArray kForeign("not ours");

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// The moment that the first 19 characters name; invalid when they name none.
QDateTime stampOf(const QString& name)
{
    const auto number = [&name](int from, int count) { return name.mid(from, count).toInt(); };
    for (int i = 0; i < kStampLength; ++i) {
        const bool dash = i == 8 || i == 15;
        if (dash ? name.at(i) != QLatin1Char('-') : !isDigit(name.at(i)))
            return {};
    }
    const QDate day(number(0, 4), number(4, 2), number(6, 2));
    const QTime time(number(9, 2), number(11, 2), number(13, 2), number(16, 3));
    return day.isValid() && time.isValid() ? QDateTime(day, time, Qt::UTC) : QDateTime();
}

bool isEntry(const QString& name)
{
    const QString ending = name.mid(kStampLength);
    return (ending == QLatin1String(".png") || ending == QLatin1String(".gif")) &&
           stampOf(name).isValid();
}

bool isUnfinished(const QString& name)
{
    if (name.size() != kPartStart.size() + kPartLetters + kPartEnd.size() ||
        !name.startsWith(kPartStart) || !name.endsWith(kPartEnd))
        return false;
    const QString letters = name.mid(kPartStart.size(), kPartLetters);
    return std::all_of(letters.begin(), letters.end(), [](QChar c) {
        return isDigit(c) || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
    });
}

QStringList everythingIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                  QDir::NoDotAndDotDot);
}

} // namespace

QString HistoryModel::path(const QString& name) const
{
    return m_folder + QLatin1Char('/') + name;
}

void HistoryModel::makeFolder(int mode)
{
    BRINDLECAM_PROMISE(QDir().mkpath(m_folder));
    test::setMode(m_folder, mode);
    m_folderMode = mode;
}

void HistoryModel::leave(const QString& name, Kind kind, int mode, const QDateTime& written)
{
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String("..") ||
        QFile::encodeName(name).size() > kLongestName || m_things.contains(name))
        return;
    Thing thing{.kind = kind, .content = kForeign, .mode = mode, .written = written};
    switch (kind) {
    case Kind::file: {
        QFile file(path(name));
        BRINDLECAM_PROMISE(file.open(QIODevice::WriteOnly) && file.write(kForeign) > 0);
        BRINDLECAM_PROMISE(file.flush());
        BRINDLECAM_PROMISE(file.setFileTime(written, QFileDevice::FileModificationTime));
        test::setMode(path(name), mode);
        break;
    }
    case Kind::folder:
        BRINDLECAM_PROMISE(QDir().mkdir(path(name)));
        break;
    case Kind::link:
        BRINDLECAM_PROMISE(symlink("nowhere", QFile::encodeName(path(name)).constData()) == 0);
        break;
    }
    m_things.emplace(name, thing);
}

/// Newest first.
QStringList HistoryModel::entries() const
{
    QStringList names;
    for (const auto& [name, thing] : m_things) {
        if (thing.kind == Kind::file && isEntry(name))
            names.prepend(name);
    }
    return names;
}

QString HistoryModel::nextName(const QString& extension, const QDateTime& now) const
{
    QDateTime time = now;
    const QStringList before = entries();
    if (!before.isEmpty()) {
        const QDateTime next = stampOf(before.first()).addMSecs(1);
        if (next.date().year() <= kLastYear)
            time = std::max(time, next);
    }
    return time.toString(kStamp) + QLatin1Char('.') + extension;
}

void HistoryModel::prune(const QString& added)
{
    QStringList names = entries();
    const bool isThere = names.removeOne(added);
    for (const QString& name : names.mid(isThere ? kMostEntries - 1 : kMostEntries))
        m_things.erase(name);
}

bool HistoryModel::add(const QByteArray& data, const QString& extension, const QDateTime& now)
{
    if (data.isEmpty())
        return false;
    if (m_folderMode == 0)
        m_folderMode = kOwnersFolder;
    const QString name = nextName(extension, now);
    const auto there = m_things.find(name);
    const bool added = there == m_things.end() || there->second.kind != Kind::folder;
    if (added)
        m_things[name] = {.kind = Kind::file, .content = data, .mode = kOwnersFile};
    prune(name);
    return added;
}

int HistoryModel::clear()
{
    const auto listed = static_cast<int>(entries().size());
    std::erase_if(m_things, [](const auto& named) {
        return named.second.kind == Kind::file &&
               (isEntry(named.first) || isUnfinished(named.first));
    });
    return listed;
}

void HistoryModel::tidy(const QDateTime& now)
{
    m_folderMode &= kOwner;
    for (const QString& name : entries())
        m_things[name].mode &= kOwner;
    std::erase_if(m_things, [&now](const auto& named) {
        const Thing& thing = named.second;
        return thing.kind == Kind::file && isUnfinished(named.first) &&
               thing.written.addDuration(kAbandoned) < now;
    });
}

void HistoryModel::check(const History& history) const
{
    QStringList items;
    for (const QString& name : entries())
        items << path(name);
    BRINDLECAM_PROMISE(history.items() == items);
    BRINDLECAM_PROMISE(QFileInfo::exists(m_folder) == (m_folderMode != 0));
    if (m_folderMode == 0)
        return;
    BRINDLECAM_PROMISE(test::modeOf(m_folder) == m_folderMode);
    BRINDLECAM_PROMISE(everythingIn(m_folder).size() == static_cast<qsizetype>(m_things.size()));
    for (const auto& [name, thing] : m_things)
        checkThing(name, thing);
}

void HistoryModel::checkThing(const QString& name, const Thing& thing) const
{
    const QFileInfo found(path(name));
    switch (thing.kind) {
    case Kind::file:
        BRINDLECAM_PROMISE(found.isFile() && !found.isSymLink());
        BRINDLECAM_PROMISE(test::contentOf(path(name)) == thing.content);
        BRINDLECAM_PROMISE(test::modeOf(path(name)) == thing.mode);
        break;
    case Kind::folder:
        BRINDLECAM_PROMISE(found.isDir() && !found.isSymLink());
        break;
    case Kind::link:
        BRINDLECAM_PROMISE(found.isSymLink());
        break;
    }
}

} // namespace brindlecam::fuzz
