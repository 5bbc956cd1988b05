#include "KeptFiles.h"

#include "Failure.h"

#include "desktop/support/Patience.h"

#include <QDir>
#include <QFile>

#include <algorithm>

#include <sys/stat.h>

namespace brindlecam::soak {

namespace {

constexpr qint64 kNanoseconds = 1'000'000'000; // a second's

} // namespace

KeptFiles::KeptFiles(QString folder, QString what, std::optional<int> most)
    : m_folder(std::move(folder))
    , m_what(std::move(what))
    , m_most(most)
{
}

KeptFiles::Files KeptFiles::present() const
{
    Files files;
    // What is being written is hidden, and appears whole.
    for (const QString& name : QDir(m_folder).entryList(QDir::Files)) {
        struct stat entry {};
        if (::stat(QFile::encodeName(m_folder + QLatin1Char('/') + name), &entry) == 0) {
            files.insert(name, {entry.st_size,
                                entry.st_mtim.tv_sec * kNanoseconds + entry.st_mtim.tv_nsec,
                                entry.st_ino});
        }
    }
    return files;
}

QStringList KeptFiles::news(const Files& now) const
{
    QStringList names;
    for (auto file = now.begin(); file != now.end(); ++file) {
        if (!m_known.contains(file.key()) || m_known.value(file.key()) != file.value())
            names.append(file.key());
    }
    std::ranges::stable_sort(names, {},
                             [&](const QString& name) { return now.value(name).changed; });
    return names;
}

QStringList KeptFiles::newestFirst() const
{
    QStringList paths;
    for (const QString& name : m_known.keys())
        paths.prepend(m_folder + QLatin1Char('/') + name);
    return paths;
}

void KeptFiles::goes(const QString& path)
{
    const QString name = path.section(QLatin1Char('/'), -1);
    require(m_known.remove(name) == 1, QStringLiteral("%1: never was %2").arg(m_what, name));
    m_going.append(name);
}

void KeptFiles::allGo()
{
    m_going += m_known.keys();
    m_known.clear();
}

/// Of those that were to go.
QStringList KeptFiles::leftOf(const Files& now) const
{
    QStringList left;
    for (const QString& name : m_going) {
        if (now.contains(name))
            left.append(name);
    }
    return left;
}

void KeptFiles::verify(int patience)
{
    const auto awaited = static_cast<qsizetype>(m_awaited.size());
    Files now;
    const auto settled = [&] {
        now = present();
        return leftOf(now).isEmpty() && news(now).size() >= awaited &&
               (!m_most || now.size() <= mostNow());
    };
    const bool inTime = desktop::waitUntil(settled, patience);
    require(leftOf(now).isEmpty(), QStringLiteral("%1: still there is %2")
                                       .arg(m_what, leftOf(now).join(QStringLiteral(", "))));
    const QStringList names = news(now);
    require(inTime && names.size() <= awaited + static_cast<qsizetype>(m_allowed.size()),
            QStringLiteral("%1: %2 new pictures instead of %3 (%4), %5 in all")
                .arg(m_what)
                .arg(names.size())
                .arg(awaited)
                .arg(names.join(QStringLiteral(", ")))
                .arg(now.size()));
    verifyNews(names);
    verifyGone(now, names);
    m_known = now;
    m_awaited.clear();
    m_allowed.clear();
    m_going.clear();
}

qsizetype KeptFiles::mostNow() const
{
    // The oldest go with a picture that comes. Who is killed in between leaves them to the next.
    return m_awaited.empty() ? std::max<qsizetype>(*m_most, m_known.size()) +
                                   static_cast<qsizetype>(m_allowed.size())
                             : *m_most;
}

void KeptFiles::verifyNews(const QStringList& names) const
{
    std::vector<std::shared_ptr<Picture>> left = m_awaited;
    left.insert(left.end(), m_allowed.begin(), m_allowed.end());
    for (const QString& name : names) {
        const QImage image(m_folder + QLatin1Char('/') + name);
        const auto shown = std::ranges::find_if(
            left, [&](const auto& picture) { return picture->isShownBy(image); });
        if (shown == left.end()) {
            throw Failure{.what = QStringLiteral("%1: %2 shows something else").arg(m_what, name),
                          .wanted = left.front()->pixels,
                          .found = image};
        }
        left.erase(shown);
    }
}

void KeptFiles::verifyGone(const Files& now, const QStringList& news) const
{
    QStringList gone;
    for (const QString& name : m_known.keys()) {
        if (!now.contains(name))
            gone.append(name);
    }
    const qsizetype tooMany = m_most ? m_known.size() + news.size() - *m_most : 0;
    require(gone.size() <= std::max<qsizetype>(tooMany, 0) &&
                gone == m_known.keys().mid(0, gone.size()),
            QStringLiteral("%1: gone are %2").arg(m_what, gone.join(QStringLiteral(", "))));
}

} // namespace brindlecam::soak
