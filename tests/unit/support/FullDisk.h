#pragma once

#include <QFile>
#include <QString>

#include <csignal>
#include <cstddef>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

namespace brindlecam::test {

/// While it lives, no file of this process grows past so many bytes, as on a full disk. Needs no
/// privilege. Whoever tests with it must not write to a log file meanwhile.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

/// A small disk of its own on top of a folder that exists, seen by the thread that makes it and by
/// those it starts afterwards; gone with the process at the latest. Only the superuser may mount:
/// whoever uses one skips the test aloud unless isMounted().
class SmallDisk final {
public:
    explicit SmallDisk(const QString& folder)
        : m_folder(QFile::encodeName(folder))
        , m_mounted(worldOfOurOwn() &&
                    mount("tmpfs", m_folder.constData(), "tmpfs", 0, "size=64k") == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_mounted)
            umount2(m_folder.constData(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    [[nodiscard]] bool isMounted() const { return m_mounted; }

    /// Takes all the room that is left; new files can still be made, but hold nothing.
    void fill()
    {
        QFile filler(fillerName());
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("the small disk takes no file");
        const QByteArray page(4096, 'x');
        while (filler.write(page) == page.size()) {
        }
    }
    void free() { QFile::remove(fillerName()); }

private:
    // Nobody else sees the mounts, and a crash leaves none.
    static bool worldOfOurOwn()
    {
        static const bool ours = unshare(CLONE_NEWNS) == 0 &&
                                 mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        return ours;
    }
    [[nodiscard]] QString fillerName() const
    {
        return QFile::decodeName(m_folder) + QStringLiteral("/.filler");
    }

    QByteArray m_folder;
    bool m_mounted;
};

} // namespace brindlecam::test
