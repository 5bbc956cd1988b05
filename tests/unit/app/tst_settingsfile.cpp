#include "app/Defaults.h"
#include "support/FullDisk.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brindlecam {

namespace {

const QString kOld = QStringLiteral("old");
const QString kNew = QStringLiteral("new");

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QStringList keysIn(const QString& path)
{
    return QJsonDocument::fromJson(contentOf(path)).object().keys();
}

void put(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

int modeOf(const QString& path)
{
    struct stat status {};
    return stat(qUtf8Printable(path), &status) == 0 ? static_cast<int>(status.st_mode & 07777) : -1;
}

} // namespace

/// The settings as a file that others write, too, and that may be a link, unreadable or in the way
/// of a full disk.
class TestSettingsFile final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_place = std::make_unique<QTemporaryDir>(); }

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
        put(file(), R"({"a": 1, "b": 2})");
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
        put(file(), R"({"autoCopy": true})");
        {
            Defaults defaults(file());
            put(file(), R"({"autoCopy": false, "showLoupe": false})");
            defaults.setNumber(kNew, 1);
        }
        const Defaults again(file());
        QCOMPARE(again.boolean(QStringLiteral("autoCopy")), std::optional(false));
        QCOMPARE(again.boolean(QStringLiteral("showLoupe")), std::optional(false));
        QCOMPARE(again.number(kNew), std::optional(1.0));
    }

    void aFileThatWasDeletedComesBackWithAllThatIsKnown()
    {
        put(file(), R"({"old": 1})");
        {
            Defaults defaults(file());
            QVERIFY(QFile::remove(file()));
            defaults.setNumber(kNew, 2);
        }
        QCOMPARE(keysIn(file()), (QStringList{kNew, kOld}));
    }

    void aFileDamagedMeanwhileIsSetAsideAndNothingKnownIsLost()
    {
        put(file(), R"({"old": 1})");
        {
            Defaults defaults(file());
            put(file(), R"({"old": 1, "hal":)");
            defaults.setNumber(kNew, 2);
        }
        QCOMPARE(keysIn(file()), (QStringList{kNew, kOld}));
        QCOMPARE(contentOf(file() + QStringLiteral(".damaged")),
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
        // It opens like any file; reading fails.
        QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), file()));
        Defaults defaults(file());
        QVERIFY(!defaults.contains(kOld));
        QVERIFY(QFileInfo(file()).isSymLink());
        defaults.setNumber(kNew, 1);
        QCOMPARE(defaults.number(kNew), std::optional(1.0));
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
            put(file(), R"({"old": 1})");
            defaults.setBoolean(QStringLiteral("newer"), true);
        }
        QCOMPARE(keysIn(file()), (QStringList{kNew, QStringLiteral("newer"), kOld}));
    }

    void noDeviceIsEverReadOrReplaced()
    {
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), file()));
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QVERIFY(!QFileInfo::exists(file() + QStringLiteral(".damaged")));
    }

    void theUsersLinkIsWrittenThrough_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("full path") << m_place->filePath(QStringLiteral("dots/brindle.json"));
        QTest::newRow("relative") << QStringLiteral("dots/brindle.json");
        QTest::newRow("by another link") << QStringLiteral("second.json");
    }
    void theUsersLinkIsWrittenThrough()
    {
        QFETCH(QString, way);
        if (QDir::isAbsolutePath(way)) // each row has a folder of its own
            way = m_place->filePath(QStringLiteral("dots/brindle.json"));
        const QString target = makeTarget();
        QVERIFY(QFile::link(QStringLiteral("dots/brindle.json"),
                            m_place->filePath(QStringLiteral("second.json"))));
        QVERIFY(QFile::link(way, file()));
        put(target, R"({"old": 1})");
        {
            Defaults defaults(file());
            QCOMPARE(defaults.number(kOld), std::optional(1.0));
            defaults.setNumber(kNew, 2);
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QVERIFY(!QFileInfo(target).isSymLink());
        QCOMPARE(keysIn(target), (QStringList{kNew, kOld}));
        QCOMPARE(filesIn(QFileInfo(target).path()), QStringList{QStringLiteral("brindle.json")});
    }

    void aLinkToAFileThatIsNotThereYetMakesIt()
    {
        const QString target = makeTarget();
        QVERIFY(QFile::link(target, file()));
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QCOMPARE(keysIn(target), QStringList{kNew});
    }

    void aLinkIntoAFolderThatIsNotThereStaysALink()
    {
        const QString target = m_place->filePath(QStringLiteral("disk/brindle.json"));
        QVERIFY(QFile::link(target, file()));
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
            QCOMPARE(defaults.number(kNew), std::optional(1.0));
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QVERIFY(!QFileInfo::exists(m_place->filePath(QStringLiteral("disk"))));
    }

    void linksInACircleStay()
    {
        const QString other = m_place->filePath(QStringLiteral("other.json"));
        QVERIFY(QFile::link(other, file()));
        QVERIFY(QFile::link(file(), other));
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QVERIFY(QFileInfo(other).isSymLink());
    }

    void damageBehindALinkIsSetAsideBesideItAndTheLinkStays()
    {
        const QString target = makeTarget();
        put(target, "no JSON");
        QVERIFY(QFile::link(target, file()));
        {
            Defaults defaults(file());
            QCOMPARE(contentOf(target + QStringLiteral(".damaged")), QByteArray("no JSON"));
            defaults.setNumber(kNew, 1);
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QCOMPARE(keysIn(target), QStringList{kNew});
    }

    void theFileIsItsOwnersOnly_data()
    {
        QTest::addColumn<bool>("linked");
        QTest::newRow("plain") << false;
        QTest::newRow("behind a link") << true;
    }
    void theFileIsItsOwnersOnly()
    {
        QFETCH(bool, linked);
        const QString target = linked ? makeTarget() : file();
        if (linked)
            QVERIFY(QFile::link(target, file()));
        const mode_t before = umask(0);
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
        }
        umask(before);
        QCOMPARE(modeOf(target), 0600);
    }

    void anExistingFileIsPutRightAtStart()
    {
        put(file(), R"({"old": 1})");
        QCOMPARE(::chmod(qUtf8Printable(file()), 0664), 0);
        const Defaults defaults(file());
        QCOMPARE(modeOf(file()), 0600);
    }

    void aFileTheUserProtectedStaysProtected()
    {
        put(file(), R"({"old": 1})");
        QCOMPARE(::chmod(qUtf8Printable(file()), 0444), 0);
        const Defaults defaults(file());
        QCOMPARE(modeOf(file()), 0400);
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
        QVERIFY(QDir().mkpath(m_place->filePath(QStringLiteral("config"))));
        test::SmallDisk disk(m_place->filePath(QStringLiteral("config")));
        if (!disk.isMounted())
            QSKIP("nobody but the superuser may mount a disk");
        const QString path = m_place->filePath(QStringLiteral("config/settings.json"));
        put(path, R"({"old": 1})");
        {
            Defaults defaults(path);
            disk.fill();
            defaults.setString(kNew, QString(size, QLatin1Char('x')));
            defaults.setNumber(QStringLiteral("newer"), 1);
        }
        QCOMPARE(contentOf(path), QByteArray(R"({"old": 1})"));
        QCOMPARE(filesIn(QFileInfo(path).path()),
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
        put(file(), R"({"old": 1, "removed": 1})");
        const QByteArray before = contentOf(file());
        const auto change = [&](Defaults& defaults) {
            const test::FileSizeLimit limit(0);
            defaults.setString(kNew, QString(size, QLatin1Char('x')));
            defaults.remove(QStringLiteral("removed"));
            defaults.waitForSaves();
        };
        {
            Defaults defaults(file(), std::chrono::milliseconds(20));
            change(defaults);
            QCOMPARE(contentOf(file()), before);
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

private:
    [[nodiscard]] QString file() const
    {
        return m_place->filePath(QStringLiteral("settings.json"));
    }

    /// Where a link may lead: a file that does not exist in a folder that does.
    [[nodiscard]] QString makeTarget() const
    {
        if (!QDir(m_place->path()).mkpath(QStringLiteral("dots")))
            qFatal("no folder can be made");
        return m_place->filePath(QStringLiteral("dots/brindle.json"));
    }

    [[nodiscard]] static QStringList filesIn(const QString& folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> m_place = std::make_unique<QTemporaryDir>();
};

BRINDLECAM_TEST(TestSettingsFile);

} // namespace brindlecam

#include "tst_settingsfile.moc"
