#include "HistoryFixture.h"
#include "support/Files.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <atomic>
#include <thread>
#include <vector>

namespace brindlecam {

namespace {

const QString kGif = QStringLiteral("gif");

} // namespace

class TestHistory final : public test::TestCase, private test::HistoryFixture {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { startFresh(); }

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
        QCOMPARE(test::contentOf(history().items().constFirst()), QByteArray("bytes"));
    }

    void itemsAreAbsolutePathsNewestFirst()
    {
        history().add("one", kPng);
        ++milliseconds;
        history().add("two", kGif);
        const QStringList items = history().items();
        QCOMPARE(items.size(), 2);
        QVERIFY(QDir::isAbsolutePath(items.constFirst()));
        QCOMPARE(test::contentOf(items.at(0)), QByteArray("two"));
        QCOMPARE(test::contentOf(items.at(1)), QByteArray("one"));
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
        QCOMPARE(test::contentOf(items.constFirst()), QByteArray("24"));
        QCOMPARE(test::contentOf(items.constLast()), QByteArray("5"));
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
            test::put(folder() + name);
        QVERIFY(QDir(folder()).mkdir(QStringLiteral("0004.png")));
        test::put(folder() + QStringLiteral("/0004.png/inside"));

        addMany(25);
        QCOMPARE(names().size(), 20);
        QCOMPARE(history().clear(), 20);
        QVERIFY(history().items().isEmpty());
        for (const QString& name : foreign)
            QCOMPARE(test::contentOf(folder() + name), QByteArray("by hand"));
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
        QCOMPARE(test::contentOf(history().items().constLast()), QByteArray("first"));
    }

    void copiesOfTheProgramThatAddAtOnceLoseNothing()
    {
        constexpr int kEach = 4;
        std::vector<std::thread> copies;
        for (int i = 0; i < 3; ++i) {
            copies.emplace_back([this] {
                const History own = history(); // each process has one
                for (int j = 0; j < kEach; ++j)
                    own.add("bytes", kPng);
            });
        }
        for (std::thread& copy : copies)
            copy.join();
        QCOMPARE(names().size(), 3 * kEach);
    }

    void entriesFromAFutureAreOlderThanANewCapture()
    {
        QVERIFY(QDir().mkpath(folder()));
        for (int second = 10; second < 35; ++second)
            test::put(folder() + QStringLiteral("/20990101-0000%1-999.png").arg(second));
        history().add("new", kPng);
        QCOMPARE(names().size(), 20);
        QCOMPARE(names().constFirst(), QStringLiteral("20990101-000035-000.png"));
        QCOMPARE(test::contentOf(history().items().constFirst()), QByteArray("new"));
        history().add("newer", kPng);
        QCOMPARE(names().constFirst(), QStringLiteral("20990101-000035-001.png"));
    }

    void aNewCaptureStaysEvenAfterTheLastMomentThereIs()
    {
        QVERIFY(QDir().mkpath(folder()));
        for (const char* moment : {"99991231-235959-999", "99991231-235959-998"}) {
            for (const char* kind : {"png", "gif"})
                test::put(folder() +
                          QStringLiteral("/%1.%2").arg(QLatin1String(moment), QLatin1String(kind)));
        }
        for (int second = 10; second < 30; ++second)
            test::put(folder() + QStringLiteral("/99990101-0000%1-999.png").arg(second));
        history().add("new", kPng);
        QCOMPARE(names().size(), 20);
        QVERIFY(names().contains(QStringLiteral("20260314-092653-000.png")));
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
        const History shared({folder()}, [&tick] {
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

        QCOMPARE(test::filesIn(folder()).size(), 20);
        QCOMPARE(QFileInfo(shared.items().constFirst()).fileName(),
                 QStringLiteral("20260314-092653-119.png"));
        for (const QString& item : shared.items())
            QCOMPARE(test::contentOf(item), data);
    }
};

BRINDLECAM_TEST(TestHistory);

} // namespace brindlecam

#include "tst_history.moc"
