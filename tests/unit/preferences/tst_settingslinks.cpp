#include "SettingsFixture.h"
#include "preferences/Defaults.h"
#include "support/Files.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace brindlecam {

/// Links in place of the settings, which belong to the user, and who may read what is behind them.
class TestSettingsLinks final : public test::TestCase, private test::SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { startFresh(); }

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
        QTest::newRow("full path") << QString(); // each row has a folder of its own
        QTest::newRow("relative") << QStringLiteral("dots/brindle.json");
        QTest::newRow("by another link") << QStringLiteral("second.json");
    }
    void theUsersLinkIsWrittenThrough()
    {
        QFETCH(QString, way);
        const QString target = makeTarget();
        if (way.isEmpty())
            way = target;
        QVERIFY(QFile::link(QStringLiteral("dots/brindle.json"),
                            place->filePath(QStringLiteral("second.json"))));
        QVERIFY(QFile::link(way, file()));
        test::put(target, R"({"old": 1})");
        {
            Defaults defaults(file());
            QCOMPARE(defaults.number(kOld), std::optional(1.0));
            defaults.setNumber(kNew, 2);
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QVERIFY(!QFileInfo(target).isSymLink());
        QCOMPARE(keysIn(target), (QStringList{kNew, kOld}));
        QCOMPARE(test::filesIn(QFileInfo(target).path()),
                 QStringList{QStringLiteral("brindle.json")});
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
        const QString target = place->filePath(QStringLiteral("disk/brindle.json"));
        QVERIFY(QFile::link(target, file()));
        {
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
            QCOMPARE(defaults.number(kNew), std::optional(1.0));
        }
        QVERIFY(QFileInfo(file()).isSymLink());
        QVERIFY(!QFileInfo::exists(place->filePath(QStringLiteral("disk"))));
    }

    void linksInACircleStay()
    {
        const QString other = place->filePath(QStringLiteral("other.json"));
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
        test::put(target, "no JSON");
        QVERIFY(QFile::link(target, file()));
        {
            Defaults defaults(file());
            QCOMPARE(test::contentOf(target + QStringLiteral(".damaged")), QByteArray("no JSON"));
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
        {
            const test::Umask none(0);
            Defaults defaults(file());
            defaults.setNumber(kNew, 1);
        }
        QCOMPARE(test::modeOf(target), 0600);
    }

    void anExistingFileIsPutRightAtStart()
    {
        test::put(file(), R"({"old": 1})");
        test::setMode(file(), 0664);
        const Defaults defaults(file());
        QCOMPARE(test::modeOf(file()), 0600);
    }

    void aFileTheUserProtectedStaysProtected()
    {
        test::put(file(), R"({"old": 1})");
        test::setMode(file(), 0444);
        const Defaults defaults(file());
        QCOMPARE(test::modeOf(file()), 0400);
    }

private:
    /// Where a link may lead: a file that does not exist in a folder that does.
    [[nodiscard]] QString makeTarget() const
    {
        if (!QDir(place->path()).mkpath(QStringLiteral("dots")))
            qFatal("no folder can be made");
        return place->filePath(QStringLiteral("dots/brindle.json"));
    }
};

BRINDLECAM_TEST(TestSettingsLinks);

} // namespace brindlecam

#include "tst_settingslinks.moc"
