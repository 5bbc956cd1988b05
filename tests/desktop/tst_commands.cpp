#include "desktop/support/CaptureTest.h"
#include "desktop/support/ClipboardManager.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <csignal>

namespace brindlecam::desktop {

/// What is said and done on the command line: other copies, options, no display, signals.
class TestCommands final : public CaptureTest {
    Q_OBJECT

private:
    const QString m_area = QStringLiteral("area");

private Q_SLOTS:
    void secondCopyHandsItsActionOver()
    {
        usePatternedDesktop();
        startProgram();
        const CommandResult area = program().command({m_area});
        QCOMPARE(area.exitCode, 0);
        QCOMPARE(area.output, QString());
        QCOMPARE(area.error, QString());
        QVERIFY(sessionIsReady());
        for (const QStringList& words :
             {QStringList(), QStringList(m_area), QStringList(QStringLiteral("fullScreen"))}) {
            const CommandResult refused = program().command(words);
            QCOMPARE(refused.exitCode, 4);
            QCOMPARE(refused.error,
                     QStringLiteral("No se hizo nada: ya hay una captura en curso.\n"));
            QCOMPARE(refused.output, QString());
        }
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());

        const QImage before = screen().grabAtRest();
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(isPasted(before));
    }

    void secondCopyWithoutAnActionReopens()
    {
        usePatternedDesktop();
        startProgram();
        QElapsedTimer sinceTheCommand;
        sinceTheCommand.start();
        QCOMPARE(program().command({}).exitCode, 0);
        QVERIFY(waitUntil([this] { return !overlays().empty(); }));
        // A menu, if there was one, has had the time to close.
        QVERIFY(sinceTheCommand.elapsed() >= 290);
        QVERIFY(sessionIsReady());
    }

    void secondCopyOnlyNeedsTheNameOfTheDisplay()
    {
        usePatternedDesktop();
        startProgram();
        // An application object would end the process.
        const QString backEnd = QStringLiteral("QT_QPA_PLATFORM");
        program().environment().insert(backEnd, QStringLiteral("absent"));
        program().environment().insert(QStringLiteral("DISPLAY"),
                                       desktop().name() + QStringLiteral(".0"));
        QCOMPARE(program().command({m_area}).exitCode, 0);
        QVERIFY(sessionIsReady());
        program().environment().remove(backEnd);
        program().environment().insert(QStringLiteral("DISPLAY"), QStringLiteral(":65000"));
        QCOMPARE(program().command({m_area}).exitCode, 2);
        QCOMPARE(program().command({QStringLiteral("-display"), desktop().name(), m_area}).exitCode,
                 4);
    }

    void wrongArgumentsAreNamed()
    {
        usePatternedDesktop();
        startProgram();
        const CommandResult result = program().command({QStringLiteral("pantalla")});
        QVERIFY(result.exitCode != 0);
        QVERIFY(result.error.startsWith(QStringLiteral("Brindlecam no entiende “pantalla”.\n")));
        QVERIFY(program().isRunning());
    }

    void versionAndHelpNeedNoDisplay_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("begin");
        QTest::newRow("--version") << QStringLiteral("--version") << QStringLiteral("Brindlecam ");
        QTest::newRow("--help") << QStringLiteral("--help") << QStringLiteral("Uso: brindlecam ");
    }
    void versionAndHelpNeedNoDisplay()
    {
        QFETCH(QString, option);
        QFETCH(QString, begin);
        usePatternedDesktop();
        program().environment().remove(QStringLiteral("DISPLAY"));
        const CommandResult result = program().command({option});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.output.startsWith(begin));
        QCOMPARE(result.error, QString());
    }

    void withoutADisplayItSaysSoInOneLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("line");
        const QString noDisplay =
            QStringLiteral("Brindlecam necesita un entorno gráfico: no hay DISPLAY.\n");
        QTest::newRow("none") << QStringLiteral("DISPLAY") << QString() << noDisplay;
        QTest::newRow("nobody there")
            << QStringLiteral("DISPLAY") << QStringLiteral(":65000") << noDisplay;
        QTest::newRow("Wayland") << QStringLiteral("WAYLAND_DISPLAY") << QStringLiteral("wayland-0")
                                 << QStringLiteral("Brindlecam todavía necesita X11.\n");
        QTest::newRow("Wayland session")
            << QStringLiteral("XDG_SESSION_TYPE") << QStringLiteral("wayland")
            << QStringLiteral("Brindlecam todavía necesita X11.\n");
    }
    void withoutADisplayItSaysSoInOneLine()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, line);
        usePatternedDesktop();
        program().environment().insert(name, value);
        for (const QStringList& arguments : {QStringList(), QStringList(m_area)}) {
            const CommandResult result = program().command(arguments);
            QCOMPARE(result.exitCode, 2);
            QCOMPARE(result.error, line);
            QCOMPARE(result.output, QString());
        }
    }

    void firstCopyPerformsItsActionThenWelcomes()
    {
        usePatternedDesktop();
        program().writeSettings({{QStringLiteral("didShowWelcome"), false}});
        program().start({m_area});
        QVERIFY(sessionIsReady());
        QVERIFY(dialogs().empty());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(dialogOpens());
        QVERIFY(dialogHasKeyboard());
        QVERIFY(program().settings().value(QLatin1String("didShowWelcome")).toBool());
        input().tap(Qt::Key_Return);
        QVERIFY(dialogsAreGone());
        // The last window is closed; the program is not.
        QVERIFY(openArea());
    }

    void openAlertIsPutAsideForACaptureAndComesBack()
    {
        // A window manager on a busy machine takes its frame away later than a capture waits.
        usePatternedDesktop({.windowManager = WindowManager::none});
        program().writeSettings({{QStringLiteral("didShowWelcome"), false}});
        const QImage empty = screen().grabAtRest();
        startProgram();
        QVERIFY(dialogOpens());
        QVERIFY(waitUntil([&] { return !samePixels(screen().grab(), empty); }));
        QVERIFY(openArea());
        QVERIFY(dialogs().empty());
        const QRect area(400, 200, 500, 400);
        select(area);
        QVERIFY(isPasted(empty.copy(area)));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(dialogOpens());
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(empty));
        QVERIFY(dialogOpens());
    }

    void failedStartLeavesNothingBehind()
    {
        usePatternedDesktop();
        program().environment().insert(QStringLiteral("DISPLAY"), QString());
        QCOMPARE(program().command({}).exitCode, 2);
        QVERIFY(!QFileInfo::exists(program().folders().history()));
        program().environment().insert(QStringLiteral("DISPLAY"), desktop().name());
        startProgram();
        QVERIFY(openArea());
    }

    void crashedCopyDoesNotBlockTheNext()
    {
        usePatternedDesktop();
        startProgram();
        QVERIFY(openArea());
        program().kill();
        QVERIFY(QFileInfo::exists(program().socket()));
        startProgram();
        QVERIFY(openArea());
    }

    void signalsQuitCleanly_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }
    void signalsQuitCleanly()
    {
        QFETCH(int, signal);
        usePatternedDesktop();
        startProgram();
        QVERIFY(openArea());
        select({300, 200, 200, 200});
        QVERIFY(waitUntil([this] { return clipboardIsTaken(); }));
        QCOMPARE(::kill(static_cast<pid_t>(program().pid()), signal), 0);
        QVERIFY(program().waitForEnd());
        QCOMPARE(program().exitCode(), 0);
        QCOMPARE(program().log(), QString());
        // Without a clipboard manager the picture goes with its owner.
        QVERIFY(!clipboardIsTaken());
        QVERIFY(overlays().empty());
    }

    void clipboardManagerKeepsThePicture_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
    }
    void clipboardManagerKeepsThePicture()
    {
        QFETCH(int, signal);
        usePatternedDesktop();
        const auto manager = desktop().startClipboardManager(KeepsBy::handing);
        startProgram();
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(before));
        QCOMPARE(::kill(static_cast<pid_t>(program().pid()), signal), 0);
        QVERIFY(waitUntil([this] { return !program().isRunning(); }));
        QCOMPARE(program().exitCode(), 0);
        QVERIFY(samePixels(QImage::fromData(manager->handedOver().value_or(QByteArray()), "PNG"),
                           before));
        QVERIFY(clipboardIsTaken()); // by the manager now
    }

    void captureThatWasAcceptedIsDeliveredBeforeQuitting()
    {
        usePatternedDesktop();
        startProgram();
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        // While its message stands, the next capture waits until that is off the screen.
        QVERIFY(toastComes());
        const qsizetype earlier = 1;
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QCOMPARE(program().quit(), 0);
        QCOMPARE(history().size(), earlier + 1);
        QCOMPARE(filesIn(program().folders().history()).size(), earlier + 1);
        for (const QString& picture : history())
            QVERIFY(samePixels(QImage(picture), before));
    }

    void captureUnderWayIsFinishedBeforeQuitting()
    {
        usePatternedDesktop();
        startProgram();
        const QImage before = screen().grabAtRest();
        // The answer comes before the capture.
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(waitUntil([this] { return clipboardIsTaken(); }));
        QCOMPARE(program().quit(), 0);
        QVERIFY(isOnlyCapture(before));
        QVERIFY(isOnlyInHistory(before));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestCommands)

#include "tst_commands.moc"
