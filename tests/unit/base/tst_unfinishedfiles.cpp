#include "base/UnfinishedFiles.h"
#include "base/WholeFile.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <memory>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brindlecam {

class TestUnfinishedFiles final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_place = std::make_unique<QTemporaryDir>(); }

    void everyNameIsAnother()
    {
        const QString name = UnfinishedFiles::newName();
        QVERIFY(UnfinishedFiles::isName(name));
        QVERIFY(UnfinishedFiles::newName() != name);
    }

    void onlyOurNamesAreOurs_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a backup of a capture")
            << QStringLiteral("Brindlecam 2026-03-14 09.26.53.png.backup");
        QTest::newRow("another's temporary file")
            << QStringLiteral("Brindlecam 2026-03-14 09.26.53.png.aBcDeF");
        QTest::newRow("a download") << QStringLiteral("foto.png.part");
        QTest::newRow("no digits") << QStringLiteral(".brindlecam-.part");
        QTest::newRow("too few digits") << QStringLiteral(".brindlecam-0kq3f81tz5xw.part");
        QTest::newRow("too many digits") << QStringLiteral(".brindlecam-0kq3f81tz5xw22.part");
        QTest::newRow("capitals") << QStringLiteral(".brindlecam-0KQ3F81TZ5XW2.part");
        QTest::newRow("something before") << QStringLiteral("a.brindlecam-0kq3f81tz5xw2.part");
        QTest::newRow("something after") << QStringLiteral(".brindlecam-0kq3f81tz5xw2.part~");
        QTest::newRow("a line more") << QStringLiteral(".brindlecam-0kq3f81tz5xw2.part\n");
        QTest::newRow("nothing") << QString();
    }
    void onlyOurNamesAreOurs()
    {
        QFETCH(QString, name);
        QVERIFY(!UnfinishedFiles::isName(name));
    }

    void whatAKilledRunLeftGoesAfterAnHour()
    {
        // The signal of a file that grows too large ends the run in the middle of a write.
        const QString path = m_place->filePath(QStringLiteral("captura.png"));
        const pid_t child = fork();
        if (child == 0) {
            const rlimit none{0, 0};
            setrlimit(RLIMIT_CORE, &none);
            const rlimit small{4096, RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &small);
            std::signal(SIGXFSZ, SIG_DFL);
            (void)writeWhole(path, QByteArray(100'000, 'x'));
            _exit(0);
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
        const QStringList left = allFiles();
        QCOMPARE(left.size(), 1);

        const QDateTime written = QFileInfo(m_place->filePath(left.constFirst())).lastModified();
        UnfinishedFiles::removeAbandoned(m_place->path(), written.addSecs(3600));
        QCOMPARE(allFiles(), left);
        UnfinishedFiles::removeAbandoned(m_place->path(), written.addSecs(3601));
        QCOMPARE(allFiles(), QStringList());
    }

    void nothingElseIsRemoved()
    {
        const QString precious = m_place->filePath(QStringLiteral("precious.png"));
        put(precious);
        put(m_place->filePath(QStringLiteral("Brindlecam 2026-03-14 09.26.53.png.backup")));
        put(m_place->filePath(QStringLiteral("settings.json.aBcDeF")));
        put(m_place->filePath(QStringLiteral(".brindlecam-notes.part")));
        QVERIFY(QFile::link(precious, m_place->filePath(UnfinishedFiles::newName())));
        QVERIFY(QDir(m_place->path()).mkpath(UnfinishedFiles::newName()));
        const QString below = m_place->filePath(QStringLiteral("below"));
        QVERIFY(QDir().mkpath(below));
        put(below + QLatin1Char('/') + UnfinishedFiles::newName());
        const QStringList before = allFiles();
        UnfinishedFiles::removeAbandoned(m_place->path(), QDateTime::currentDateTime().addDays(1));
        QCOMPARE(allFiles(), before);
        QCOMPARE(QDir(below).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void anotherUsersFilesStay()
    {
        const QString name = m_place->filePath(UnfinishedFiles::newName());
        put(name);
        if (geteuid() != 0)
            QSKIP("nobody but the superuser may give files away");
        QCOMPARE(::chown(qUtf8Printable(name), 65534, 65534), 0);
        UnfinishedFiles::removeAbandoned(m_place->path(), QDateTime::currentDateTime().addDays(1));
        QVERIFY(QFile::exists(name));
    }

    void aFolderThatIsNotThereIsNoTrouble()
    {
        const QString nowhere = m_place->filePath(QStringLiteral("nowhere"));
        UnfinishedFiles::removeAbandoned(nowhere, QDateTime::currentDateTime());
        QVERIFY(!QFile::exists(nowhere));
    }

private:
    static void put(const QString& path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    [[nodiscard]] QStringList allFiles() const
    {
        return QDir(m_place->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_place = std::make_unique<QTemporaryDir>();
};

BRINDLECAM_TEST(TestUnfinishedFiles);

} // namespace brindlecam

#include "tst_unfinishedfiles.moc"
