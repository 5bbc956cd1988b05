#include "ProgramDesk.h"
#include "base/UnfinishedFiles.h"
#include "support/TestCase.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

namespace brindlecam {

class TestProgram final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aCaptureUnderWayIsDeliveredBeforeTheEnd_data()
    {
        QTest::addColumn<bool>("asked");
        QTest::newRow("asked to quit") << true;
        QTest::newRow("the main loop is gone") << false;
    }
    void aCaptureUnderWayIsDeliveredBeforeTheEnd()
    {
        QFETCH(bool, asked);
        test::ProgramDesk desk;
        desk.grabber.waits = true;
        desk.start(CaptureAction::fullScreen);
        QTimer::singleShot(0, &desk.captures(), [&desk] { desk.grabber.answer(); });
        QCOMPARE(desk.ask({{"fullScreen"}, {}}).reply.exitCode, 4);
        if (asked) {
            desk.quit();
            QCOMPARE(desk.ask({{"fullScreen"}, {}}).reply.exitCode, 3);
        }
        desk.program.reset();
        QCOMPARE(desk.journal.count(QStringLiteral("hangs up")), 1);
        QCOMPARE(desk.kept(), 1);
    }

    void aCaptureWithoutScreensEndsByItself()
    {
        test::ProgramDesk desk;
        desk.displays.all.clear();
        desk.start(CaptureAction::area);
        QVERIFY(!desk.captures().busy());
    }

    void aCaptureTakesTheDrawerOffTheScreenFirst()
    {
        for (const CaptureAction action : {CaptureAction::fullScreen, CaptureAction::area}) {
            test::ProgramDesk desk;
            desk.start(CaptureAction::recents);
            QTRY_VERIFY(desk.drawer().panel());
            desk.program->delegate().perform(action);
            QVERIFY(!desk.drawer().isOpen());
            QCOMPARE(desk.panels.visibleNow(), 0);
            QCOMPARE(desk.grabber.calls, 0); // the desktop repaints what lay beneath
            QTRY_COMPARE(desk.grabber.calls, 1);
        }
    }

    void theDrawerGoesWithTheProgram()
    {
        test::ProgramDesk desk;
        desk.start(CaptureAction::recents);
        QTRY_VERIFY(desk.drawer().panel());
        desk.quit();
        QCOMPARE(desk.panels.visibleNow(), 0);
        QVERIFY(!desk.canRun(CaptureAction::recents));
    }

    void theStartTidiesWhatKilledRunsAndEarlierVersionsLeft()
    {
        test::ProgramDesk desk(test::ProgramDesk::Run::first);
        const QString captures = desk.folder.filePath(QStringLiteral("Capturas"));
        const QString dots = desk.folder.filePath(QStringLiteral("dots"));
        const QStringList folders{captures, dots, History::standardFolder()};
        QStringList abandoned;
        QStringList precious;
        for (const QString& folder : folders) {
            QVERIFY(QDir().mkpath(folder));
            abandoned << folder + QLatin1Char('/') + UnfinishedFiles::newName();
            put(abandoned.constLast(), "half", Age::twoHours);
            precious << folder + QLatin1Char('/') + UnfinishedFiles::newName();
            put(precious.constLast(), "being written", Age::now);
            precious << folder + QStringLiteral("/Brindlecam 2026-03-14 09.26.53.png.backup");
            put(precious.constLast(), "precious", Age::twoHours);
        }
        const QString entry =
            History::standardFolder() + QStringLiteral("/20260314-092653-589.png");
        put(entry, "picture", Age::twoHours);
        constexpr auto forAll = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(entry, forAll));
        // The settings lie where the user's link leads, and so does what was left of them.
        put(dots + QStringLiteral("/brindle.json"),
            R"({"didShowWelcome": true, "saveFolder": "~/Capturas"})", Age::twoHours);
        QVERIFY(QDir().mkpath(QFileInfo(Defaults::standardFile()).path()));
        QVERIFY(QFile::link(dots + QStringLiteral("/brindle.json"), Defaults::standardFile()));

        desk.start();
        for (const QString& path : abandoned)
            QTRY_VERIFY2(!QFile::exists(path), qPrintable(path));
        QTRY_VERIFY(!(QFile::permissions(entry) & QFile::ReadOther));
        for (const QString& path : precious)
            QVERIFY2(QFile::exists(path), qPrintable(path));
        QVERIFY(QFileInfo(Defaults::standardFile()).isSymLink());
    }

private:
    enum class Age { now, twoHours };

    static void put(const QString& path, const QByteArray& content, Age age)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
        QVERIFY(file.flush());
        if (age == Age::twoHours) {
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-2 * 3600),
                                     QFileDevice::FileModificationTime));
        }
    }
};

BRINDLECAM_TEST(TestProgram);

} // namespace brindlecam

#include "tst_program.moc"
