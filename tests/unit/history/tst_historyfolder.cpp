#include "HistoryFixture.h"
#include "base/UnfinishedFiles.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/LockedFolder.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace brindlecam {

/// The history's folder: who may look into it, links in it, disks that refuse, and what is put
/// right at the start.
class TestHistoryFolder final : public test::TestCase, private test::HistoryFixture {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { startFresh(); }

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
        {
            const test::Umask usual(mask);
            history().add("bytes", kPng);
        }
        QCOMPARE(test::modeOf(folder()), 0700);
        QCOMPARE(test::modeOf(history().items().constFirst()), 0600);
    }

    void whatEarlierVersionsLeftIsPutRight()
    {
        addMany(2);
        const QString entry = history().items().constFirst();
        const QString foreign = folder() + QStringLiteral("/notes.txt");
        test::put(foreign);
        for (const QString& file : {entry, foreign})
            test::setMode(file, 0644);
        test::setMode(folder(), 0755);
        history().tidy();
        QCOMPARE(test::modeOf(folder()), 0700);
        QCOMPARE(test::modeOf(entry), 0600);
        QCOMPARE(test::modeOf(foreign), 0644);
        QCOMPARE(names().size(), 2);
    }

    void aFolderBehindTheUsersLinkStaysShared()
    {
        const QString shared = place->filePath(QStringLiteral("shared"));
        QVERIFY(QDir().mkpath(shared));
        QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
        QVERIFY(QFile::link(shared, folder()));
        test::setMode(shared, 0755);
        addMany(1);
        history().tidy();
        QCOMPARE(test::modeOf(shared), 0755);
        QCOMPARE(test::modeOf(history().items().constFirst()), 0600);
    }

    void whatKilledRunsLeftGoesAfterAnHour()
    {
        addMany(2);
        test::put(folder() + QLatin1Char('/') + UnfinishedFiles::newName(), "half a picture");
        test::put(folder() + QStringLiteral("/20250101-000000-000.png.backup"));
        const QStringList before = test::filesIn(folder());
        const QDateTime now = QDateTime::currentDateTime();
        History({folder()}, [now] { return now; }).tidy();
        QCOMPARE(test::filesIn(folder()), before);
        History({folder()}, [now] { return now.addSecs(3700); }).tidy();
        QCOMPARE(test::filesIn(folder()).size(), before.size() - 1);
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
        const QString precious = place->filePath(QStringLiteral("precious.txt"));
        test::put(precious, "precious");
        QVERIFY(QFile::link(precious, folder() + QStringLiteral("/20260314-092653-000.png")));
        history().add("bytes", kPng);
        QCOMPARE(test::contentOf(precious), QByteArray("precious"));
        QCOMPARE(names(), QStringList{QStringLiteral("20260314-092653-000.png")});
        QVERIFY(!QFileInfo(history().items().constFirst()).isSymLink());
        QCOMPARE(test::contentOf(history().items().constFirst()), QByteArray("bytes"));
    }

    void linksAreNoEntries()
    {
        QVERIFY(QDir().mkpath(folder()));
        const QString photograph = place->filePath(QStringLiteral("photograph.png"));
        test::put(photograph);
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
        const test::LockedFolder locked(folder(), place->path());
        QCOMPARE(history().clear(), 3);
        QCOMPARE(history().items().size(), 3);
    }

    void unwritableFolderIsSwallowed()
    {
        addMany(20);
        const QStringList before = test::filesIn(folder());
        const test::LockedFolder locked(folder(), place->path());
        history().add("bytes", kPng);
        QCOMPARE(test::filesIn(folder()), before);
    }

    void aFolderThatCannotBeReadIsEmpty()
    {
        addMany(3);
        const QStringList before = history().items();
        {
            const test::LockedFolder locked(folder(), place->path(),
                                            test::LockedFolder::Lock::unreadable);
            QVERIFY(history().items().isEmpty());
            QCOMPARE(history().clear(), 0);
            QVERIFY(!history().add("bytes", kPng));
            QVERIFY(!history().thumbnail(before.front(), {64, 64}));
            QVERIFY(!History::clipboardContent(before.front()));
            history().remove(before.front());
        }
        QCOMPARE(history().items(), before);
    }

    void clearTakesAlongWhatAKilledProgramLeft()
    {
        addMany(1);
        const QString leftover = folder() + QLatin1Char('/') + UnfinishedFiles::newName();
        test::put(leftover, "half a picture");
        QVERIFY(!history().items().contains(leftover));
        QCOMPARE(history().clear(), 1);
        QVERIFY(!QFileInfo::exists(leftover));
    }

    void whereNoFileMayGrowNothingIsAdded_data() { addSizes(); }
    void whereNoFileMayGrowNothingIsAdded()
    {
        QFETCH(int, size);
        addMany(20);
        const QStringList before = test::filesIn(folder());
        {
            const test::FileSizeLimit limit(0);
            history().add(QByteArray(size, 'x'), kPng);
        }
        QCOMPARE(test::filesIn(folder()), before);
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
        const QStringList before = test::filesIn(folder());
        history().add(QByteArray(size, 'x'), kPng);
        QCOMPARE(test::filesIn(folder()), before);
    }

    void fileInPlaceOfTheFolderIsSwallowed()
    {
        QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
        test::put(folder(), "in the way");
        history().add("bytes", kPng);
        QVERIFY(history().items().isEmpty());
        QCOMPARE(history().clear(), 0);
        QCOMPARE(test::contentOf(folder()), QByteArray("in the way"));
    }

private:
    static void addSizes()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("small") << 700;
        QTest::newRow("large") << 100'000;
    }
};

BRINDLECAM_TEST(TestHistoryFolder);

} // namespace brindlecam

#include "tst_historyfolder.moc"
