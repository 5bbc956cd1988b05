#include "NewFiles.h"

#include <QFile>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>

namespace brindlecam::bench {

namespace {

constexpr int kPatience = 15000; // milliseconds

bool isWhole(const QString& path)
{
    constexpr qint64 kLastChunk = 8; // its name and checksum
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() > kLastChunk &&
           file.seek(file.size() - kLastChunk) && file.readAll().startsWith("IEND");
}

} // namespace

NewFiles::NewFiles(const QString& folder)
    : m_folder(folder)
    , m_watch(inotify_init1(IN_CLOEXEC))
{
    if (m_watch < 0 || inotify_add_watch(m_watch, QFile::encodeName(folder).constData(),
                                         IN_MOVED_TO | IN_CREATE | IN_CLOSE_WRITE) < 0)
        qFatal("the folder can't be watched: %s", qPrintable(folder));
}

NewFiles::~NewFiles()
{
    close(m_watch);
}

std::optional<QString> NewFiles::awaitPng()
{
    alignas(inotify_event) std::array<char, 8192> events{};
    pollfd readable{m_watch, POLLIN, 0};
    while (poll(&readable, 1, kPatience) > 0) {
        const ssize_t length = read(m_watch, events.data(), events.size());
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            if (event->len == 0)
                continue;
            const QString path = m_folder + QLatin1Char('/') + QFile::decodeName(event->name);
            if (path.endsWith(QLatin1String(".png")) && isWhole(path))
                return path;
        }
    }
    return {};
}

} // namespace brindlecam::bench
