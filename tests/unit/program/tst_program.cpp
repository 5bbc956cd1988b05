#include "Program.h"
#include "base/UnfinishedFiles.h"
#include "platform/null/NullPlatform.h"
#include "support/FakeDisplays.h"
#include "support/FakeGrabber.h"
#include "support/TestCase.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

namespace brindlecam {

class TestProgram final : public test::TestCase {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

private Q_SLOTS:
    void initTestCase()
    {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "HOME"})
            qputenv(variable, m_folder.path().toLocal8Bit());
    }

    void everyCallbackOfABuiltRoomIsFilled()
    {
        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        const AppDelegate& delegate = program.delegate();
        QVERIFY(delegate.onArea);
        QVERIFY(delegate.onFullScreen);
        QVERIFY(delegate.onCountdown);
        QVERIFY(delegate.onQuit);
        const StatusMenu& menu = program.menu();
        QVERIFY(menu.onCapture);
        QVERIFY(menu.onCaptureDelayed);
        QVERIFY(menu.onOpenFolder);
        QVERIFY(menu.onAbout);
        QVERIFY(menu.onQuit);
        QVERIFY(menu.isAvailable);
        const HotKeyCenter& keys = program.hotKeyCenter();
        QVERIFY(keys.onPressed);
        QVERIFY(keys.isAvailable);
        QVERIFY(keys.onReloaded);
        const CaptureController& captures = program.captureController();
        QVERIFY(captures.onPin);
        const PinnedCaptures& pins = program.pinnedCaptures();
        QVERIFY(pins.onCopy);
        QVERIFY(pins.onSave);
    }

    void actionsAreAvailableExactlyWhenTheirRoomIsBuilt()
    {
        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        QVERIFY(program.delegate().isAvailable(CaptureAction::area));
        QVERIFY(program.delegate().isAvailable(CaptureAction::fullScreen));
        QVERIFY(!program.delegate().isAvailable(CaptureAction::recents));
        QVERIFY(!program.hotKeyCenter().isAvailable(CaptureAction::recents));
    }

    void aCaptureUnderWayIsDeliveredBeforeTheEnd_data()
    {
        QTest::addColumn<bool>("asked");
        QTest::newRow("asked to quit") << true;
        QTest::newRow("the main loop is gone") << false;
    }
    void aCaptureUnderWayIsDeliveredBeforeTheEnd()
    {
        QFETCH(bool, asked);
        QDir(History::standardFolder()).removeRecursively();
        Platform platform = makeNullPlatform();
        auto displays = std::make_unique<test::FakeDisplays>();
        displays->all = {{QStringLiteral("ONE"), QRect(0, 0, 40, 30), 1, QRect(0, 0, 40, 30)}};
        displays->pointerAt = QPoint(5, 5);
        platform.displays = std::move(displays);
        auto grabber = std::make_unique<test::FakeGrabber>();
        test::FakeGrabber& grabs = *grabber;
        grabs.waits = true;
        platform.grabber = std::move(grabber);
        int quitting = 0;
        {
            Program program(std::move(platform), CaptureFailure::Voice::silent);
            program.onQuitting = [&quitting] { ++quitting; };
            QVERIFY(!program.delegate().isBusy());
            program.start(CaptureAction::fullScreen);
            QVERIFY(program.delegate().isBusy());
            if (asked) {
                program.quit();
                QCOMPARE(quitting, 1);
                QVERIFY(!program.pinnedCaptures().onCopy);
                QVERIFY(!program.pinnedCaptures().onSave);
                QCOMPARE(program.delegate().answer({{"fullScreen"}, {}}).reply.exitCode, 3);
            }
            QTimer::singleShot(0, &program.captureController(), [&grabs] { grabs.answer(); });
        }
        QCOMPARE(quitting, 1);
        QCOMPARE(QDir(History::standardFolder()).entryList(QDir::Files).size(), 1);
    }

    void aCaptureWithoutScreensEndsByItself()
    {
        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        program.start(CaptureAction::area);
        QVERIFY(!program.captureController().busy());
    }

    void theStartTidiesWhatKilledRunsAndEarlierVersionsLeft()
    {
        const QString captures = m_folder.filePath(QStringLiteral("Capturas"));
        const QString dots = m_folder.filePath(QStringLiteral("dots"));
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
        QFile::remove(Defaults::standardFile());
        QVERIFY(QFile::link(dots + QStringLiteral("/brindle.json"), Defaults::standardFile()));

        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        program.start({});
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
