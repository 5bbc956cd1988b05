#include "SettingsFixture.h"
#include "preferences/Defaults.h"
#include "preferences/SettingsFile.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QLockFile>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <thread>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brindlecam {

namespace {

/// From now on every read of this process fails as on a broken disk; files open all the same.
bool refuseToRead()
{
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_read, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EIO),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{std::size(steps), steps};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

} // namespace

/// The settings as a file that others write, too, and that may be unreadable or lie on a full disk.
class TestSettingsFile final : public test::TestCase, private test::SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { startFresh(); }

    void twoCopiesWithTwoKeysBothSurvive()
    {
        {
            Defaults one(file());
            Defaults other(file());
            one.setNumber(QStringLiteral("size.pen"), 7);
            QTRY_COMPARE(keysIn(file()), QStringList{QStringLiteral("size.pen")});
            other.setNumber(QStringLiteral("size.line"), 9);
            other.setBoolean(QStringLiteral("autoCopy"), false);
        }
        const Defaults again(file());
        QCOMPARE(again.number(QStringLiteral("size.pen")), std::optional(7.0));
        QCOMPARE(again.number(QStringLiteral("size.line")), std::optional(9.0));
        QCOMPARE(again.boolean(QStringLiteral("autoCopy")), std::optional(false));
    }

    void aCopyRemovesOnlyWhatItRemoved()
    {
        test::put(file(), R"({"a": 1, "b": 2})");
        {
            Defaults one(file());
            Defaults other(file());
            one.setNumber(QStringLiteral("c"), 3);
            one.remove(QStringLiteral("a"));
            QTRY_COMPARE(keysIn(file()), (QStringList{QStringLiteral("b"), QStringLiteral("c")}));
            other.remove(QStringLiteral("b"));
        }
        QCOMPARE(keysIn(file()), QStringList{QStringLiteral("c")});
    }

    void twoCopiesThatSaveAtTheSameTimeLoseNothing()
    {
        constexpr int kChanges = 40;
        const auto change = [this](const char* name) {
            for (int i = 0; i < kChanges; ++i) {
                // One store for each change: each is a copy that reads, changes and saves.
                Defaults copy(file());
                copy.setNumber(QStringLiteral("%1.%2").arg(QLatin1String(name)).arg(i), i);
            }
        };
        std::thread one(change, "one");
        std::thread other(change, "other");
        one.join();
        other.join();
        QCOMPARE(keysIn(file()).size(), 2 * kChanges);
    }

    void whatTheUserWroteMeanwhileStays()
    {
        test::put(file(), R"({"autoCopy": true})");
        {
            Defaults defaults(file());
            test::put(file(), R"({"autoCopy": false, "showLoupe": false})");
            defaults.setNumber(kNew, 1);
        }
        const Defaults again(file());
        QCOMPARE(again.boolean(QStringLiteral("autoCopy")), std::optional(false));
        QCOMPARE(again.boolean(QStringLiteral("showLoupe")), std::optional(false));
        QCOMPARE(again.number(kNew), std::optional(1.0));
    }

    void aFileThatWasDeletedComesBackWithAllThatIsKnown()
    {
        test::put(file(), R"({"old": 1})");
        {
            Defaults defaults(file());
            QVERIFY(QFile::remove(file()));
            defaults.setNumber(kNew, 2);
        }
        QCOMPARE(keysIn(file()), (QStringList{kNew, kOld}));
    }

    void aFileDamagedMeanwhileIsSetAsideAndNothingKnownIsLost()
    {
        test::put(file(), R"({"old": 1})");
        {
            Defaults defaults(file());
            test::put(file(), R"({"old": 1, "hal":)");
            defaults.setNumber(kNew, 2);
        }
        QCOMPARE(keysIn(file()), (QStringList{kNew, kOld}));
        QCOMPARE(test::contentOf(file() + QStringLiteral(".damaged")),
                 QByteArray(R"({"old": 1, "hal":)"));
    }

    void aLockThatNobodyGivesBackLosesNothing()
    {
        QLockFile held(file() + QStringLiteral(".lock"));
        QVERIFY(held.tryLock(0));
        {
            Defaults defaults(file(), std::chrono::milliseconds(20));
            defaults.setNumber(kNew, 1);
        }
        QCOMPARE(keysIn(file()), QStringList{kNew});
    }

    void theLockOfAKilledRunHoldsNobodyUp()
    {
        const QString lock = file() + QStringLiteral(".lock");
        const pid_t child = fork();
        if (child == 0) {
            QLockFile held(lock);
            _exit(held.tryLock(0) ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
        QVERIFY(QFileInfo::exists(lock));
        {
            Defaults defaults(file(), std::chrono::hours(1));
            defaults.setNumber(kNew, 1);
        }
        QCOMPARE(keysIn(file()), QStringList{kNew});
        QVERIFY(!QFileInfo::exists(lock));
    }

    void aFolderInPlaceOfTheLockLosesNothing()
    {
        QVERIFY(QDir().mkpath(file() + QStringLiteral(".lock/inside")));
        {
            Defaults defaults(file(), std::chrono::milliseconds(20));
            defaults.setNumber(kNew, 1);
        }
        QCOMPARE(keysIn(file()), QStringList{kNew});
    }

    void aReadErrorIsNoDamage()
    {
        test::put(file(), R"({"old": 1})");
        const QString path = file();
        const pid_t child = fork();
        if (child == 0) {
            if (!refuseToRead())
                _exit(2);
            const SettingsFile settings(path, std::chrono::milliseconds(20));
            const bool leftAlone =
                settings.load().isEmpty() && !settings.merge({{kNew, 1}}, QJsonObject{{kNew, 1}});
            _exit(leftAlone ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(waitpid(child, &status, 0), child);
        if (WIFEXITED(status) && WEXITSTATUS(status) == 2)
            QSKIP("this system refuses nothing to a process that asks for it");
        QCOMPARE(test::contentOf(file()), QByteArray(R"({"old": 1})"));
        QCOMPARE(test::filesIn(place->path()), QStringList{QStringLiteral("settings.json")});
        QCOMPARE(status, 0);
    }

    void aLinkToWhatCannotBeReadStays()
    {
        // It opens like any file; reading fails.
        QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), file()));
        Defaults defaults(file());
        QVERIFY(!defaults.contains(kOld));
        QVERIFY(QFileInfo(file()).isSymLink());
        defaults.setNumber(kNew, 1);
        QCOMPARE(defaults.number(kNew), std::optional(1.0));
        defaults.waitForSaves();
        QVERIFY(QFileInfo(file()).isSymLink());
    }

    void whatCouldNotBeReadAtFirstIsMergedOnceItCan()
    {
        QVERIFY(QDir().mkpath(file()));
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
            defaults.waitForSaves();
            QVERIFY(QFileInfo(file()).isDir());
            QVERIFY(QDir().rmdir(file()));
            test::put(file(), R"({"old": 1})");
            defaults.setBoolean(QStringLiteral("newer"), true);
        }
        QCOMPARE(keysIn(file()), (QStringList{kNew, QStringLiteral("newer"), kOld}));
    }

    void aFullDiskKeepsTheOldSettings_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("small") << 1;
        QTest::newRow("large") << 20'000;
    }
    void aFullDiskKeepsTheOldSettings()
    {
        QFETCH(int, size);
        QVERIFY(QDir().mkpath(place->filePath(QStringLiteral("config"))));
        test::SmallDisk disk(place->filePath(QStringLiteral("config")));
        if (!disk.isMounted())
            QSKIP("nobody but the superuser may mount a disk");
        const QString path = place->filePath(QStringLiteral("config/settings.json"));
        test::put(path, R"({"old": 1})");
        {
            Defaults defaults(path);
            disk.fill();
            defaults.setString(kNew, QString(size, QLatin1Char('x')));
            defaults.setNumber(QStringLiteral("newer"), 1);
        }
        QCOMPARE(test::contentOf(path), QByteArray(R"({"old": 1})"));
        QCOMPARE(test::filesIn(QFileInfo(path).path()),
                 (QStringList{QStringLiteral(".filler"), QStringLiteral("settings.json")}));
    }

    void whereNoFileMayGrowTheOldSettingsStayAndTheNewComeLater_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("anotherChange");
        QTest::newRow("small, with the next change") << 1 << true;
        QTest::newRow("large, with the next change") << 20'000 << true;
        QTest::newRow("small, at the end") << 1 << false;
        QTest::newRow("large, at the end") << 20'000 << false;
    }
    void whereNoFileMayGrowTheOldSettingsStayAndTheNewComeLater()
    {
        QFETCH(int, size);
        QFETCH(bool, anotherChange);
        test::put(file(), R"({"old": 1, "removed": 1})");
        const QByteArray before = test::contentOf(file());
        const auto change = [&](Defaults& defaults) {
            const test::FileSizeLimit limit(0);
            defaults.setString(kNew, QString(size, QLatin1Char('x')));
            defaults.remove(QStringLiteral("removed"));
            defaults.waitForSaves();
        };
        {
            Defaults defaults(file(), std::chrono::milliseconds(20));
            change(defaults);
            QCOMPARE(test::contentOf(file()), before);
            if (anotherChange) {
                defaults.setString(kNew, QStringLiteral("y"));
                defaults.waitForSaves();
                QCOMPARE(keysIn(file()), (QStringList{kNew, kOld}));
            }
        }
        const Defaults again(file());
        QCOMPARE(again.string(kNew).value_or(QString()).size(), anotherChange ? 1 : size);
        QCOMPARE(keysIn(file()), (QStringList{kNew, kOld}));
    }
};

BRINDLECAM_TEST(TestSettingsFile);

} // namespace brindlecam

#include "tst_settingsfile.moc"
