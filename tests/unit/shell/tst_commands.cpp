// Covers CaptureAction, ProgramAction.
#include "shell/Commands.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestCommands final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void argumentsSayWhatToStartFor_data()
    {
        using Kind = Command::Kind;
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<Command>("expected");
        const auto action = [](CaptureAction what) { return Command{.action = what}; };
        const auto wrong = [](const char* what) {
            return Command{.kind = Kind::wrong, .wrongArgument = QString::fromUtf8(what)};
        };
        QTest::newRow("nothing") << QString() << Command{};
        QTest::newRow("area") << QStringLiteral("area") << action(CaptureAction::area);
        QTest::newRow("full screen")
            << QStringLiteral("fullScreen") << action(CaptureAction::fullScreen);
        QTest::newRow("recents") << QStringLiteral("recents") << action(CaptureAction::recents);
        const auto other = [](ProgramAction what) { return Command{.other = what}; };
        QTest::newRow("settings") << QStringLiteral("settings") << other(ProgramAction::settings);
        QTest::newRow("folder") << QStringLiteral("folder") << other(ProgramAction::openFolder);
        QTest::newRow("update") << QStringLiteral("update") << other(ProgramAction::update);
        QTest::newRow("about") << QStringLiteral("about") << other(ProgramAction::about);
        QTest::newRow("quit") << QStringLiteral("quit") << other(ProgramAction::quit);
        QTest::newRow("an area later") << QStringLiteral("area --delay 3")
                                       << Command{.action = CaptureAction::area, .delay = 3};
        QTest::newRow("the option first")
            << QStringLiteral("--delay 5 fullScreen")
            << Command{.action = CaptureAction::fullScreen, .delay = 5};
        QTest::newRow("its value attached") << QStringLiteral("area --delay=60")
                                            << Command{.action = CaptureAction::area, .delay = 60};
        QTest::newRow("no delay at all") << QStringLiteral("area --delay 0") << wrong("0");
        QTest::newRow("too long a delay") << QStringLiteral("area --delay 61") << wrong("61");
        QTest::newRow("no number") << QStringLiteral("area --delay tres") << wrong("tres");
        QTest::newRow("no value") << QStringLiteral("area --delay") << wrong("--delay");
        QTest::newRow("two delays")
            << QStringLiteral("area --delay 3 --delay 5") << wrong("--delay");
        QTest::newRow("recents later") << QStringLiteral("recents --delay 3") << wrong("--delay");
        QTest::newRow("settings later") << QStringLiteral("settings --delay 3") << wrong("--delay");
        QTest::newRow("a delay of nothing") << QStringLiteral("--delay 3") << wrong("--delay");
        QTest::newRow("a capture and something else")
            << QStringLiteral("area settings") << wrong("settings");
        QTest::newRow("version") << QStringLiteral("--version") << Command{.kind = Kind::version};
        QTest::newRow("help") << QStringLiteral("--help") << Command{.kind = Kind::help};
        QTest::newRow("help wins over an action")
            << QStringLiteral("area --help") << Command{.kind = Kind::help};
        QTest::newRow("ports") << QStringLiteral("--ports") << Command{.kind = Kind::ports};
        QTest::newRow("ports of another display")
            << QStringLiteral("--ports -display :2") << Command{.kind = Kind::ports};
        QTest::newRow("ports win over an action")
            << QStringLiteral("area --ports")
            << Command{.kind = Kind::ports, .action = CaptureAction::area};
        QTest::newRow("ports and something wrong")
            << QStringLiteral("--ports selfie") << wrong("selfie");
        QTest::newRow("live test") << QStringLiteral("--livetest") << Command{.liveTest = true};
        QTest::newRow("live test and an action")
            << QStringLiteral("--livetest area")
            << Command{.action = CaptureAction::area, .liveTest = true};
        QTest::newRow("Qt's option with a value")
            << QStringLiteral("-platform offscreen area") << action(CaptureAction::area);
        QTest::newRow("Qt's option with a value that reads like an action")
            << QStringLiteral("--title area") << Command{};
        QTest::newRow("Qt's option with its value attached")
            << QStringLiteral("-style=fusion recents") << action(CaptureAction::recents);
        QTest::newRow("Qt's switch")
            << QStringLiteral("-reverse area") << action(CaptureAction::area);
        QTest::newRow("Qt's option without its value") << QStringLiteral("-platform") << Command{};
        QTest::newRow("another word") << QStringLiteral("selfie") << wrong("selfie");
        QTest::newRow("names are exact") << QStringLiteral("fullscreen") << wrong("fullscreen");
        QTest::newRow("another option") << QStringLiteral("area --now") << wrong("--now");
        QTest::newRow("two actions") << QStringLiteral("area recents") << wrong("recents");
        QTest::newRow("a lonely dash") << QStringLiteral("-") << wrong("-");
    }
    void argumentsSayWhatToStartFor()
    {
        QFETCH(QString, arguments);
        QFETCH(Command, expected);
        const Command parsed =
            Commands::parse(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        QCOMPARE(parsed.kind, expected.kind);
        QCOMPARE(parsed.action, expected.action);
        QCOMPARE(parsed.delay, expected.delay);
        QCOMPARE(parsed.other, expected.other);
        QCOMPARE(parsed.liveTest, expected.liveTest);
        QCOMPARE(parsed.wrongArgument, expected.wrongArgument);
    }

    void theDisplayThatQtIsGivenIsKnown_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("display");
        QTest::newRow("none") << QStringLiteral("area") << QString();
        QTest::newRow("the next argument")
            << QStringLiteral("-display :2 area") << QStringLiteral(":2");
        QTest::newRow("two dashes") << QStringLiteral("area --display :2") << QStringLiteral(":2");
        QTest::newRow("attached") << QStringLiteral("-display=:2.0") << QStringLiteral(":2.0");
        QTest::newRow("missing") << QStringLiteral("-display") << QString();
        QTest::newRow("for the ports")
            << QStringLiteral("--ports -display :2") << QStringLiteral(":2");
    }
    void theDisplayThatQtIsGivenIsKnown()
    {
        QFETCH(QString, arguments);
        const Command parsed = Commands::parse(arguments.split(QLatin1Char(' ')));
        QVERIFY(parsed.kind != Command::Kind::wrong);
        QTEST(parsed.display, "display");
    }

    void theBackEndThatQtIsGivenIsKnown_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("backEnd");
        QTest::newRow("none") << QStringLiteral("area") << QString();
        QTest::newRow("the next argument")
            << QStringLiteral("--ports -platform offscreen") << QStringLiteral("offscreen");
        QTest::newRow("attached") << QStringLiteral("--platform=xcb area") << QStringLiteral("xcb");
        QTest::newRow("missing") << QStringLiteral("-platform") << QString();
        QTest::newRow("another option of the kind")
            << QStringLiteral("-platformtheme gtk3") << QString();
    }
    void theBackEndThatQtIsGivenIsKnown()
    {
        QFETCH(QString, arguments);
        QTEST(Commands::parse(arguments.split(QLatin1Char(' '))).backEnd, "backEnd");
    }

    void usageNamesEveryCommand()
    {
        const QString usage = Commands::usage(Commands::Updates::offered);
        for (const CaptureAction action : kAllCaptureActions)
            QVERIFY(usage.contains(QStringLiteral("\n  %1 ").arg(rawValue(action))));
        for (const ProgramAction action : kAllProgramActions)
            QVERIFY(usage.contains(QStringLiteral("\n  %1 ").arg(rawValue(action))));
        for (const char* option : {"--delay", "--version", "--help", "--livetest", "--ports"})
            QVERIFY(usage.contains(QStringLiteral("\n  %1 ").arg(QLatin1String(option))));
    }

    void withoutUpdatesThereIsNoCommandForThem()
    {
        using enum Commands::Updates;
        QStringList with = Commands::usage(offered).split(QLatin1Char('\n'));
        const qsizetype lines = with.removeIf(
            [](const QString& line) { return line.startsWith(QLatin1String("  update ")); });
        QCOMPARE(lines, 1);
        QCOMPARE(Commands::usage(absent).split(QLatin1Char('\n')), with);

        const Command update = Commands::parseWords({"update"});
        QVERIFY(!Commands::spokenReply(update, offered));
        const auto refused = Commands::spokenReply(update, absent);
        QVERIFY(refused);
        QCOMPARE(refused->exitCode, int(Commands::wrongArguments));
        QCOMPARE(refused->text, (Commands::complaint(QStringLiteral("update")) + QLatin1Char('\n') +
                                 Commands::usage(absent) + QLatin1Char('\n'))
                                    .toUtf8());
        QVERIFY(!Commands::spokenReply(Commands::parseWords({"about"}), absent));
    }

    void theComplaintNamesTheArgument()
    {
        QVERIFY(Commands::complaint(QStringLiteral("selfie")).contains(QStringLiteral("selfie")));
    }
};

BRINDLECAM_TEST(TestCommands);

} // namespace brindlecam

#include "tst_commands.moc"
