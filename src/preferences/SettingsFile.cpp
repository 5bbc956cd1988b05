#include "preferences/SettingsFile.h"

#include "base/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>

#include <filesystem>
#include <system_error>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kMostLinks = 40; // as many as the system itself follows

QString lockFor(const QString& path)
{
    return path + QStringLiteral(".lock");
}

} // namespace

struct SettingsFile::Content {
    enum class State { absent, readable, damaged, unreadable };
    State state;
    QJsonObject values = {};
};

SettingsFile::SettingsFile(QString path, std::chrono::milliseconds patience)
    : m_path(std::move(path))
    , m_patience(patience)
{
}

QString SettingsFile::target() const
{
    QFileInfo file(m_path);
    for (int i = 0; i < kMostLinks && file.isSymLink(); ++i)
        file.setFile(file.symLinkTarget());
    return file.filePath();
}

QString SettingsFile::folder() const
{
    return QFileInfo(target()).path();
}

SettingsFile::Content SettingsFile::read(const QString& target)
{
    const std::filesystem::path path = QFileInfo(target).filesystemFilePath();
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found)
        return {Content::State::absent};
    QFile file(target);
    if (type != std::filesystem::file_type::regular ||
        !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {Content::State::unreadable};
    const auto bytes = readWhole(file);
    if (!bytes)
        return {Content::State::unreadable};
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (!document.isObject())
        return {Content::State::damaged};
    return {Content::State::readable, document.object()};
}

bool SettingsFile::setAside(const QString& target)
{
    keepFromOthers(target);
    const QString aside = target + QStringLiteral(".damaged");
    QFile::remove(aside);
    return QFile::rename(target, aside);
}

QJsonObject SettingsFile::load() const
{
    const QString file = target();
    const Content content = read(file);
    switch (content.state) {
    case Content::State::absent:
    case Content::State::unreadable:
        return {};
    case Content::State::readable:
        keepFromOthers(file);
        return content.values;
    case Content::State::damaged:
        break;
    }
    // Another copy may be replacing it at this moment. If one is writing, the file has its turn
    // when there is something to save: the start does not wait.
    QLockFile lock(lockFor(m_path));
    if (!lock.tryLock(0))
        return {};
    const Content again = read(file);
    if (again.state == Content::State::damaged)
        (void)setAside(file);
    return again.values;
}

bool SettingsFile::merge(const Changes& changes, const QJsonObject& all) const
{
    const QString file = target();
    // A folder that is missing behind a link belongs to a disk that is not there.
    if (file == m_path)
        QDir().mkpath(folder());
    QLockFile lock(lockFor(m_path));
    (void)lock.tryLock(static_cast<int>(m_patience.count()));

    Content content = read(file);
    switch (content.state) {
    case Content::State::unreadable:
        return false;
    case Content::State::damaged:
        if (!setAside(file))
            return false;
        content.values = all;
        break;
    case Content::State::absent:
        content.values = all;
        break;
    case Content::State::readable:
        for (auto change = changes.cbegin(); change != changes.cend(); ++change)
            content.values.insert(change.key(), change.value());
        break;
    }
    return writeWhole(file, QJsonDocument(content.values).toJson(), Readers::ownerOnly);
}

} // namespace brindlecam
