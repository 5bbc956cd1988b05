#include "base/UnfinishedFiles.h"
#include "recents/History.h"
#include "support/FullDisk.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <atomic>
#include <thread>
#include <vector>

#include <sys/stat.h>
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
        const QStringList foreign{QStringLiteral("/0001.jpg"),
                                  QStringLiteral("/0002.PNG"),
                                  QStringLiteral("/.DS_Store"),
                                  QStringLiteral("/0003.png.part"),
                                  QStringLiteral("/foto.png"),
                                  QStringLiteral("/zoo.gif"),
                                  QStringLiteral("/20250101-000000-000 (copia).png"),
                                  QStringLiteral("/20250101-000000-000.png.backup")};
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

    void addsOfTheSameMillisecondAreTwoEntries()
    {
        history().add("first", kPng);
        history().add("second", kGif);
        history().add("third", kPng);
        QCOMPARE(names(), (QStringList{QStringLiteral("20260314-092653-002.png"),
                                       QStringLiteral("20260314-092653-001.gif"),
                                       QStringLiteral("20260314-092653-000.png")}));
        QCOMPARE(contentOf(history().items().constLast()), QByteArray("first"));
    }

    void entriesFromAFutureAreOlderThanANewCapture()
    {
        QVERIFY(QDir().mkpath(folder()));
        for (int second = 10; second < 35; ++second)
            put(folder() + QStringLiteral("/20990101-0000%1-999.png").arg(second));
        history().add("new", kPng);
        QCOMPARE(names().size(), 20);
        QCOMPARE(names().constFirst(), QStringLiteral("20990101-000035-000.png"));
        QCOMPARE(contentOf(history().items().constFirst()), QByteArray("new"));
        history().add("newer", kPng);
        QCOMPARE(names().constFirst(), QStringLiteral("20990101-000035-001.png"));
    }

    void aNewCaptureStaysEvenAfterTheLastMomentThereIs()
    {
        QVERIFY(QDir().mkpath(folder()));
        for (const char* moment : {"99991231-235959-999", "99991231-235959-998"}) {
            for (const char* kind : {"png", "gif"})
                put(folder() +
                    QStringLiteral("/%1.%2").arg(QLatin1String(moment), QLatin1String(kind)));
        }
        for (int second = 10; second < 30; ++second)
            put(folder() + QStringLiteral("/99990101-0000%1-999.png").arg(second));
        history().add("new", kPng);
        QCOMPARE(names().size(), 20);
        QVERIFY(names().contains(QStringLiteral("20260314-092653-000.png")));
    }

    void theFolderAndItsFilesAreTheirOwnersOnly_data()
    {
        QTest::addColumn<int>("mask");
        QTest::newRow("usual") << 0022;
        QTest::newRow("none") << 0000;
        QTest::newRow("hides even from its owner") << 0277;
    }
    void theFolderAndItsFilesAreTheirOwnersOnly()
    {
        QFETCH(int, mask);
        QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
        const mode_t before = umask(static_cast<mode_t>(mask));
        history().add("bytes", kPng);
        umask(before);
        QCOMPARE(modeOf(folder()), 0700);
        QCOMPARE(modeOf(history().items().constFirst()), 0600);
    }

    void whatEarlierVersionsLeftIsPutRight()
    {
        addMany(2);
        const QString entry = history().items().constFirst();
        const QString foreign = folder() + QStringLiteral("/notes.txt");
        put(foreign);
        for (const QString& file : {entry, foreign})
            QCOMPARE(::chmod(qUtf8Printable(file), 0644), 0);
        QCOMPARE(::chmod(qUtf8Printable(folder()), 0755), 0);
        history().tidy();
        QCOMPARE(modeOf(folder()), 0700);
        QCOMPARE(modeOf(entry), 0600);
        QCOMPARE(modeOf(foreign), 0644);
        QCOMPARE(names().size(), 2);
    }

    void aFolderBehindTheUsersLinkStaysShared()
    {
        const QString shared = m_place->filePath(QStringLiteral("shared"));
        QVERIFY(QDir().mkpath(shared));
        QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
        QVERIFY(QFile::link(shared, folder()));
        QCOMPARE(::chmod(qUtf8Printable(shared), 0755), 0);
        addMany(1);
        history().tidy();
        QCOMPARE(modeOf(shared), 0755);
        QCOMPARE(modeOf(history().items().constFirst()), 0600);
    }

    void whatKilledRunsLeftGoesAfterAnHour()
    {
        addMany(2);
        put(folder() + QLatin1Char('/') + UnfinishedFiles::newName(), "half a picture");
        put(folder() + QStringLiteral("/20250101-000000-000.png.backup"));
        const QStringList before = allFiles();
        const QDateTime now = QDateTime::currentDateTime();
        History(folder(), [now] { return now; }).tidy();
        QCOMPARE(allFiles(), before);
        History(folder(), [now] { return now.addSecs(3700); }).tidy();
        QCOMPARE(allFiles().size(), before.size() - 1);
        QCOMPARE(names().size(), 2);
    }

    void tidyingWhereThereIsNoHistoryMakesNone()
    {
        history().tidy();
        QVERIFY(!QFileInfo::exists(folder()));
    }

    void aLinkUnderTheNewNameIsReplaced()
    {
        QVERIFY(QDir().mkpath(folder()));
        const QString precious = m_place->filePath(QStringLiteral("precious.txt"));
        put(precious, "precious");
        QVERIFY(QFile::link(precious, folder() + QStringLiteral("/20260314-092653-000.png")));
        history().add("bytes", kPng);
        QCOMPARE(contentOf(precious), QByteArray("precious"));
        QCOMPARE(names(), QStringList{QStringLiteral("20260314-092653-000.png")});
        QVERIFY(!QFileInfo(history().items().constFirst()).isSymLink());
        QCOMPARE(contentOf(history().items().constFirst()), QByteArray("bytes"));
    }

    void linksAreNoEntries()
    {
        QVERIFY(QDir().mkpath(folder()));
        const QString photograph = m_place->filePath(QStringLiteral("photograph.png"));
        put(photograph);
        const QString link = folder() + QStringLiteral("/20250101-000000-000.png");
        QVERIFY(QFile::link(photograph, link));
        QVERIFY(history().items().isEmpty());
        addMany(25);
        QCOMPARE(history().clear(), 20);
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(QFileInfo::exists(photograph));
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
        const QString leftover = folder() + QLatin1Char('/') + UnfinishedFiles::newName();
        put(leftover, "half a picture");
        QVERIFY(!history().items().contains(leftover));
        QCOMPARE(history().clear(), 1);
        QVERIFY(!QFileInfo::exists(leftover));
    }

    void whereNoFileMayGrowNothingIsAdded_data() { addSizes(); }
    void whereNoFileMayGrowNothingIsAdded()
    {
        QFETCH(int, size);
        addMany(20);
        const QStringList before = allFiles();
        {
            const test::FileSizeLimit limit(0);
            history().add(QByteArray(size, 'x'), kPng);
        }
        QCOMPARE(allFiles(), before);
    }

    void onAFullDiskNothingIsAdded_data() { addSizes(); }
    void onAFullDiskNothingIsAdded()
    {
        QFETCH(int, size);
        QVERIFY(QDir().mkpath(folder()));
        test::SmallDisk disk(folder());
        if (!disk.isMounted())
            QSKIP("nobody but the superuser may mount a disk");
        addMany(3);
        disk.fill();
        const QStringList before = allFiles();
        history().add(QByteArray(size, 'x'), kPng);
        QCOMPARE(allFiles(), before);
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
    static void addSizes()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("small") << 700;
        QTest::newRow("large") << 100'000;
    }

    static int modeOf(const QString& path)
    {
        struct stat status {};
        return stat(qUtf8Printable(path), &status) == 0 ? static_cast<int>(status.st_mode & 07777)
                                                        : -1;
    }

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
