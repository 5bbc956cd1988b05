// Covers LinuxPlatform, Platform.
#include "desktop/support/CaptureTest.h"

#include <csignal>

namespace brindlecam::desktop {

namespace {

const auto kPorts = QStringLiteral("--ports");
const auto kArea = QStringLiteral("area");

} // namespace

/// Which ports the program says it has, and what is left of it where some are missing.
class TestPorts final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void eachPortIsNamedWithItsClass()
    {
        usePatternedDesktop();
        const CommandResult result = program().command({kPorts});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output, QStringLiteral("displays X11Displays\n"
                                               "grabber X11Grabber\n"
                                               "windowList X11WindowList\n"
                                               "captureAccess NullCaptureAccess\n"
                                               "hotKeys X11HotKeys\n"
                                               "inputGrabs X11InputGrabs\n"
                                               "foreignPresses X11ForeignPresses\n"
                                               "panels X11Panels\n"
                                               "pins X11Pins\n"
                                               "compositing X11Compositing\n"
                                               "pasteboard X11Pasteboard\n"
                                               "frontApplication X11FrontApplication\n"
                                               "fileOpener LinuxFileOpener\n"
                                               "loginItem LinuxLoginItem\n"
                                               "textRecognizer TesseractTextRecognizer\n"
                                               "trayHosts XEmbedTrayHosts+StatusNotifierHosts\n"
                                               "quitSignals UnixQuitSignals\n"));
        QCOMPARE(result.error, QString());
    }

    void noRunningCopyIsAsked()
    {
        usePatternedDesktop();
        startProgram();
        force("HOTKEYS", "null");
        const CommandResult result = program().command({kPorts, kArea});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(lines(result).contains(QStringLiteral("hotKeys NullHotKeys")));
        QVERIFY(program().isRunning());
        // It would have answered "area" by now.
        QCOMPARE(program().command({kArea}).exitCode, 0);
        QVERIFY(sessionIsReady());
    }

    void onePortIsForcedAndTheOthersStay()
    {
        usePatternedDesktop();
        QStringList expected = lines(program().command({kPorts}));
        force("TRAYHOSTS", "xembed");
        force("GRABBER", "x11");
        expected.replaceInStrings(QStringLiteral("+StatusNotifierHosts"), QString());
        QCOMPARE(lines(program().command({kPorts})), expected);
    }

    void whatCantBeForcedIsRefused_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QString>("line");
        QTest::newRow("no such class here")
            << QByteArray("GRABBER")
            << QStringLiteral("BRINDLECAM_PORT_GRABBER: aquí no hay “portal”. Hay: x11, null.\n");
        QTest::newRow("no such port")
            << QByteArray("GRABER")
            << QStringLiteral("BRINDLECAM_PORT_GRABER: no hay ningún puerto que se llame así. Hay: "
                              "DISPLAYS, GRABBER, WINDOWLIST, CAPTUREACCESS, HOTKEYS, INPUTGRABS, "
                              "FOREIGNPRESSES, PANELS, PINS, COMPOSITING, PASTEBOARD, "
                              "FRONTAPPLICATION, FILEOPENER, LOGINITEM, "
                              "TEXTRECOGNIZER, TRAYHOSTS, QUITSIGNALS.\n");
    }
    void whatCantBeForcedIsRefused()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QString, line);
        usePatternedDesktop();
        force(variable, "portal");
        for (const QStringList& words : {QStringList(), QStringList(kArea), QStringList(kPorts)}) {
            const CommandResult result = program().command(words);
            QCOMPARE(result.exitCode, 2);
            QCOMPARE(result.error, line);
            QCOMPARE(result.output, QString());
        }
    }

    void portsAreToldWhereTheProgramWouldRun_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("line");
        QTest::newRow("no display")
            << QStringLiteral("DISPLAY") << QString()
            << QStringLiteral("Brindlecam necesita un entorno gráfico: no hay DISPLAY.\n");
        QTest::newRow("Wayland") << QStringLiteral("WAYLAND_DISPLAY") << QStringLiteral("wayland-0")
                                 << QStringLiteral("Brindlecam todavía necesita X11.\n");
    }
    void portsAreToldWhereTheProgramWouldRun()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, line);
        usePatternedDesktop();
        program().environment().insert(name, value);
        const CommandResult refused = program().command({kPorts});
        QCOMPARE(refused.exitCode, 2);
        QCOMPARE(refused.error, line);
        QCOMPARE(refused.output, QString());
        const CommandResult offscreen =
            program().command({kPorts, QStringLiteral("-platform"), QStringLiteral("offscreen")});
        QCOMPARE(offscreen.exitCode, 0);
        QCOMPARE(offscreen.output.count(QStringLiteral(" Null")), 17);
    }

    void withoutHotKeysItCapturesByCommand()
    {
        usePatternedDesktop();
        force("HOTKEYS", "null");
        const QImage before = screen().grabAtRest();
        program().start();
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(isPasted(before));
        const auto rival = desktop().rival();
        for (const Qt::Key key : {kAreaKey, kFullScreenKey})
            QVERIFY(!rival->isHotKeyTaken(key, kHotKeyModifiers));
        QCOMPARE(program().command({kArea}).exitCode, 0);
        QVERIFY(overlaysAreUp());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    void anAreaIsTakenWithout_data()
    {
        QTest::addColumn<QByteArray>("port");
        for (const char* port : {"WINDOWLIST", "HOTKEYS", "INPUTGRABS", "FRONTAPPLICATION",
                                 "FILEOPENER", "TEXTRECOGNIZER", "TRAYHOSTS"})
            QTest::newRow(port) << QByteArray(port);
    }
    void anAreaIsTakenWithout()
    {
        QFETCH(QByteArray, port);
        usePatternedDesktop();
        force(port, "null");
        const QImage before = screen().grabAtRest();
        program().start();
        QCOMPARE(program().command({kArea}).exitCode, 0);
        QVERIFY(overlaysAreUp());
        const QRect area(400, 200, 500, 400);
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(isPasted(before.copy(area)));
        QVERIFY(sessionIsOver());
        QCOMPARE(program().log(), QString());
    }

    void whatCantBeSeenIsSaid_data()
    {
        QTest::addColumn<QByteArray>("port");
        QTest::newRow("no displays") << QByteArray("DISPLAYS");
        QTest::newRow("no grabber") << QByteArray("GRABBER");
    }
    void whatCantBeSeenIsSaid()
    {
        QFETCH(QByteArray, port);
        usePatternedDesktop();
        force(port, "null");
        program().start();
        QCOMPARE(program().command({kArea}).exitCode, 0);
        QVERIFY(dialogOpens());
        // The alert goes and comes again, and nothing is left half done.
        for (const QString& word : {QStringLiteral("fullScreen"), kArea})
            QVERIFY(waitUntil([&] { return program().command({word}).exitCode == 0; }));
        QVERIFY(dialogOpens());
        QVERIFY(overlays().empty());
        QCOMPARE(program().log(), QString());
    }

    void withoutAClipboardThePictureIsKept()
    {
        usePatternedDesktop();
        force("PASTEBOARD", "null");
        const QImage before = screen().grabAtRest();
        program().start();
        QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0);
        QVERIFY(isOnlyCapture(before));
        QVERIFY(isOnlyInHistory(before));
        QVERIFY(!clipboardIsTaken());
    }

    void withoutPanelsTheFrozenScreenIsAWindow()
    {
        usePatternedDesktop();
        force("PANELS", "null");
        program().start();
        QCOMPARE(program().command({kArea}).exitCode, 0);
        QVERIFY(waitUntil([this] { return !windows().shown(program().pid()).empty(); }));
        QVERIFY(overlays().empty());
        QCOMPARE(program().command({kArea}).exitCode, 4);
    }

    void withoutQuitSignalsASignalEndsItAtOnce()
    {
        usePatternedDesktop();
        force("QUITSIGNALS", "null");
        program().start();
        QCOMPARE(::kill(static_cast<pid_t>(program().pid()), SIGTERM), 0);
        QVERIFY(program().waitForEnd());
        QCOMPARE(program().exitCode(), -1);
    }

    void withoutAnyPortItStaysAndAnswers()
    {
        usePatternedDesktop();
        const QStringList ports = lines(program().command({kPorts}));
        for (const QString& line : ports) {
            const QString name = line.section(QLatin1Char(' '), 0, 0);
            force(name.toUpper().toLatin1(), "null");
        }
        for (const QString& line : lines(program().command({kPorts})))
            QVERIFY(line.contains(QStringLiteral(" Null")));
        program().start();
        for (const QString& word : {kArea, QStringLiteral("fullScreen"), kArea})
            QCOMPARE(program().command({word}).exitCode, 0);
        QVERIFY(waitUntil([this] { return !windows().shown(program().pid()).empty(); }));
        QCOMPARE(program().log(), QString());
        program().kill(); // nothing else would end it
    }

private:
    void force(const QByteArray& port, const char* maker)
    {
        program().environment().insert(QStringLiteral("BRINDLECAM_PORT_") +
                                           QString::fromLatin1(port),
                                       QString::fromLatin1(maker));
    }
    static QStringList lines(const CommandResult& result)
    {
        return result.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPorts)

#include "tst_ports.moc"
