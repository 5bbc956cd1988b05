#include "recents/History.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

namespace brindlecam {

namespace {

const QString kPng = QStringLiteral("png");
const QString kGif = QStringLiteral("gif");

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(const QString& path, const QByteArray& content = "by hand")
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

/// While it lives, writing past this many bytes of any file fails as on a full disk.
class FullDisk final {
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

/// While it lives, nothing can be made or deleted in the folder, not even by the superuser's tests,
/// which become another user meanwhile.
class ReadOnlyFolder final {
public:
    ReadOnlyFolder(const QString& folder, const QString& outermost)
        : m_folder(folder)
    {
        QFile::setPermissions(outermost, kOpen);
        QFile::setPermissions(m_folder, kReadOnly);
        if (geteuid() == 0)
            m_changed = seteuid(kNobody) == 0;
    }
    ~ReadOnlyFolder()
    {
        if (m_changed && seteuid(0) != 0)
            qFatal("can't become the superuser again");
        QFile::setPermissions(m_folder, kOpen);
    }
    Q_DISABLE_COPY_MOVE(ReadOnlyFolder)

private:
    static constexpr uid_t kNobody = 65534;
    static constexpr QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ExeOwner |
                                                    QFile::ReadGroup | QFile::ExeGroup |
                                                    QFile::ReadOther | QFile::ExeOther;
    static constexpr QFile::Permissions kOpen = kReadOnly | QFile::WriteOwner;

    QString m_folder;
    bool m_changed = false;
};

} // namespace

class TestHistory final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        m_place = std::make_unique<QTemporaryDir>();
        m_milliseconds = 0;
    }

    void freshInstallationHasNoItems()
    {
        QVERIFY(history().items().isEmpty());
        QCOMPARE(history().clear(), 0);
        QVERIFY(!QDir(folder()).exists());
    }

    void standardFolderLiesInTheUsersData()
    {
        QCOMPARE(History::standardFolder(),
                 QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                     QStringLiteral("/Brindlecam/Recientes"));
    }

    void firstAddMakesTheFolderAndKeepsTheBytes()
    {
        history().add("bytes", kPng);
        QCOMPARE(names(), QStringList{QStringLiteral("20260314-092653-000.png")});
        QCOMPARE(contentOf(history().items().constFirst()), QByteArray("bytes"));
    }

    void itemsAreAbsolutePathsNewestFirst()
    {
        history().add("one", kPng);
        ++m_milliseconds;
        history().add("two", kGif);
        const QStringList items = history().items();
        QCOMPARE(items.size(), 2);
        QVERIFY(QDir::isAbsolutePath(items.constFirst()));
        QCOMPARE(contentOf(items.at(0)), QByteArray("two"));
        QCOMPARE(contentOf(items.at(1)), QByteArray("one"));
    }

    void entry21PushesOutExactlyTheOldest()
    {
        addMany(20);
        const QStringList before = names();
        QCOMPARE(before.size(), 20);
        history().add("21", kPng);
        const QStringList after = names();
        QCOMPARE(after.size(), 20);
        QCOMPARE(after.mid(1), before.first(19));
    }

    void the20NewestOf25Stay()
    {
        addMany(25);
        const QStringList items = history().items();
        QCOMPARE(items.size(), 20);
        QCOMPARE(contentOf(items.constFirst()), QByteArray("24"));
        QCOMPARE(contentOf(items.constLast()), QByteArray("5"));
    }

    void foreignFilesAreNeverListedPrunedOrCleared()
    {
        history().add("mine", kPng);
        const QStringList foreign{QStringLiteral("/0001.jpg"), QStringLiteral("/0002.PNG"),
                                  QStringLiteral("/.DS_Store"), QStringLiteral("/0003.png.part")};
        for (const QString& name : foreign)
            put(folder() + name);
        QVERIFY(QDir(folder()).mkdir(QStringLiteral("0004.png")));
        put(folder() + QStringLiteral("/0004.png/inside"));

        addMany(25);
        QCOMPARE(names().size(), 20);
        QCOMPARE(history().clear(), 20);
        QVERIFY(history().items().isEmpty());
        for (const QString& name : foreign)
            QCOMPARE(contentOf(folder() + name), QByteArray("by hand"));
        QVERIFY(QFileInfo::exists(folder() + QStringLiteral("/0004.png/inside")));
    }

    void secondAddOfTheSameMillisecondReplacesTheFirst()
    {
        history().add("first, and longer", kPng);
        history().add("second", kPng);
        QCOMPARE(history().items().size(), 1);
        QCOMPARE(contentOf(history().items().constFirst()), QByteArray("second"));
    }

    void pngComesBeforeGifOfTheSameMillisecond()
    {
        history().add("moving", kGif);
        history().add("still", kPng);
        QCOMPARE(names(), (QStringList{QStringLiteral("20260314-092653-000.png"),
                                       QStringLiteral("20260314-092653-000.gif")}));
    }

    void clearCountsWhatWasListedEvenIfNothingCanGo()
    {
        addMany(3);
        const ReadOnlyFolder locked(folder(), m_place->path());
        QCOMPARE(history().clear(), 3);
        QCOMPARE(history().items().size(), 3);
    }

    void unwritableFolderIsSwallowed()
    {
        addMany(20);
        const QStringList before = allFiles();
        const ReadOnlyFolder locked(folder(), m_place->path());
        history().add("bytes", kPng);
        QCOMPARE(allFiles(), before);
    }

    void clearTakesAlongWhatAKilledProgramLeft()
    {
        addMany(1);
        const QString leftover = folder() + QStringLiteral("/20260101-000000-000.png.aBcDeF");
        put(leftover, "half a picture");
        QVERIFY(!history().items().contains(leftover));
        QCOMPARE(history().clear(), 1);
        QVERIFY(!QFileInfo::exists(leftover));
    }

    void fullDiskLeavesNoHalfFile()
    {
        addMany(2);
        const QStringList before = allFiles();
        {
            const FullDisk disk(4096);
            history().add(QByteArray(100'000, 'x'), kPng);
        }
        QCOMPARE(allFiles(), before);
    }

    void fullDiskKeepsTheEntryThatWouldHaveBeenReplaced()
    {
        history().add("first", kPng);
        {
            const FullDisk disk(4096);
            history().add(QByteArray(100'000, 'x'), kPng);
        }
        QCOMPARE(allFiles().size(), 1);
        QCOMPARE(contentOf(history().items().constFirst()), QByteArray("first"));
    }

    void fileInPlaceOfTheFolderIsSwallowed()
    {
        QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
        put(folder(), "in the way");
        history().add("bytes", kPng);
        QVERIFY(history().items().isEmpty());
        QCOMPARE(history().clear(), 0);
        QCOMPARE(contentOf(folder()), QByteArray("in the way"));
    }

    void nothingToKeepMakesNoEntry()
    {
        history().add({}, kPng);
        QVERIFY(history().items().isEmpty());
    }

    void addsFromManyThreadsLeave20WholeEntries()
    {
        constexpr int kThreads = 4;
        constexpr int kAddsEach = 30;
        std::atomic<int> tick = 0;
        const History shared(folder(), [&tick] {
            return QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53)).addMSecs(tick++);
        });
        const QByteArray data(5000, 'x');
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                for (int j = 0; j < kAddsEach; ++j)
                    shared.add(data, kPng);
            });
        }
        for (std::thread& thread : threads)
            thread.join();

        QCOMPARE(allFiles().size(), 20);
        QCOMPARE(QFileInfo(shared.items().constFirst()).fileName(),
                 QStringLiteral("20260314-092653-119.png"));
        for (const QString& item : shared.items())
            QCOMPARE(contentOf(item), data);
    }

private:
    [[nodiscard]] QString folder() const
    {
        return m_place->filePath(QStringLiteral("share/Brindlecam/Recientes"));
    }

    [[nodiscard]] History history()
    {
        return History(folder(), [this] {
            return QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53)).addMSecs(m_milliseconds);
        });
    }

    void addMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            history().add(QByteArray::number(i), kPng);
            ++m_milliseconds;
        }
    }

    [[nodiscard]] QStringList names()
    {
        QStringList result;
        for (const QString& item : history().items())
            result << QFileInfo(item).fileName();
        return result;
    }

    [[nodiscard]] QStringList allFiles() const
    {
        return QDir(folder()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    std::unique_ptr<QTemporaryDir> m_place = std::make_unique<QTemporaryDir>();
    int m_milliseconds = 0;
};

BRINDLECAM_TEST(TestHistory);

} // namespace brindlecam

#include "tst_history.moc"
