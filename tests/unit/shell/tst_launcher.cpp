#include "RuntimeFolders.h"
#include "shell/Commands.h"
#include "shell/InstanceProtocol.h"
#include "shell/InstanceServer.h"
#include "support/TestCase.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#include <sys/socket.h>
#include <sys/un.h>

#include <chrono>

namespace brindlecam {

namespace {

constexpr int kProgramsCode = 42;

/// The launcher in a tree as it is installed, with a program that says what it was started with.
class Installed final {
public:
    explicit Installed(const QString& prefix = QStringLiteral("una carpeta"))
        : m_bin(m_root.filePath(prefix + QStringLiteral("/bin")))
    {
        QVERIFY(QDir().mkpath(m_bin));
        QVERIFY(QFile::copy(QStringLiteral(BRINDLECAM_LAUNCHER), launcher()));
    }
    void addProgram() const
    {
        const QString path = QDir::cleanPath(m_bin + QLatin1Char('/') +
                                             QLatin1String(BRINDLECAM_PROGRAM_FROM_LAUNCHER));
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile program(path);
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\nprintf '<%s>' \"$@\"\nexit 42\n");
        QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    }

    [[nodiscard]] QString launcher() const { return m_bin + QStringLiteral("/brindlecam"); }
    [[nodiscard]] test::Ended run(const QStringList& words) const
    {
        return folders.run(launcher(), words);
    }

    test::RuntimeFolders folders;

private:
    QTemporaryDir m_root;
    const QString m_bin;
};

test::Ended runInRoot(const Installed& installed, const QString& word)
{
    return installed.folders.run(QStringLiteral("/bin/sh"),
                                 {QStringLiteral("-c"),
                                  QStringLiteral("cd / && exec \"$0\" \"$1\""),
                                  installed.launcher(), word});
}

enum class Manners { hangsUp, stays, goesOn };

/// A running copy that says what it is told to, right or wrong, and keeps what it was asked.
class Parrot final {
public:
    Parrot(const QString& path, QByteArray says, Manners manners = Manners::hangsUp)
        : m_says(std::move(says))
        , m_manners(manners)
    {
        QVERIFY(m_server.listen(path));
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            QLocalSocket* client = m_server.nextPendingConnection();
            QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] {
                heard += client->readAll();
                if (!heard.endsWith('\n'))
                    return;
                client->write(m_says);
                if (m_manners == Manners::hangsUp)
                    client->disconnectFromServer();
                else if (m_manners == Manners::goesOn)
                    goOn(*client);
            });
        });
    }

    QByteArray heard;

private:
    static void goOn(QLocalSocket& client)
    {
        auto* next = new QTimer(&client);
        QObject::connect(next, &QTimer::timeout, &client, [&client] { client.write("x"); });
        next->start(std::chrono::milliseconds(100));
    }

    QLocalServer m_server;
    const QByteArray m_says;
    const Manners m_manners;
};

sockaddr_un addressOf(const QString& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path);
    return address;
}

/// A socket with a name; it does not listen.
int bindSocket(const QString& path)
{
    const int end = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = addressOf(path);
    [&] {
        QCOMPARE(::bind(end, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }();
    return end;
}

/// A file that looks like a socket and is none any more, as a crash leaves it.
void leaveDeadSocket(const QString& path)
{
    ::close(bindSocket(path));
}

/// Listens with room for one connection that waits, and takes none.
int listenDeaf(const QString& path)
{
    const int end = bindSocket(path);
    [&] { QCOMPARE(::listen(end, 0), 0); }();
    return end;
}

} // namespace

class TestLauncher final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theRunningCopyAnswersInItsPlace()
    {
        const Installed installed;
        installed.addProgram();
        std::vector<InstanceRequest> asked;
        InstanceServer server([&asked](const InstanceRequest& request) {
            asked.push_back(request);
            return request.words.size() > 1 ? InstanceAnswer{{4, "Ahora no.\n"}}
                                            : InstanceAnswer{{0, "Una línea.\nOtra.\n"}};
        });
        QVERIFY(server.listen(installed.folders.socket()));
        const test::Ended done = installed.run({QStringLiteral("área de\nhoy")});
        QCOMPARE(done.output, QStringLiteral("Una línea.\nOtra.\n"));
        QCOMPARE(done.error, QString());
        QCOMPARE(done.exitCode, 0);
        const test::Ended refused = installed.run({QStringLiteral("area"), QString()});
        QCOMPARE(refused.output, QString());
        QCOMPARE(refused.error, QStringLiteral("Ahora no.\n"));
        QCOMPARE(refused.exitCode, 4);
        QCOMPARE(installed.run({}).exitCode, 0);
        const QByteArray here = QFile::encodeName(QDir::currentPath());
        QCOMPARE(asked, (std::vector<InstanceRequest>{
                            {{"área de\nhoy"}, here}, {{"area", ""}, here}, {{}, here}}));
    }

    void longAnswersComeWhole()
    {
        const Installed installed;
        const QByteArray text(BRINDLECAM_LONGEST_ANSWER - 3, 'x');
        const Parrot copy(installed.folders.socket(), "64\n" + text);
        const test::Ended ended = installed.run({QStringLiteral("nada")});
        QCOMPARE(ended.exitCode, 64);
        QCOMPARE(ended.error, QString::fromLatin1(text));
    }

    void whereNobodyListensItBecomesTheProgram_data()
    {
        QTest::addColumn<QString>("there");
        QTest::newRow("no socket") << QString();
        QTest::newRow("a dead socket") << QStringLiteral("socket");
        QTest::newRow("a file") << QStringLiteral("file");
        QTest::newRow("no place to meet") << QStringLiteral("nowhere");
    }
    void whereNobodyListensItBecomesTheProgram()
    {
        QFETCH(QString, there);
        Installed installed;
        installed.addProgram();
        if (there == QLatin1String("socket")) {
            leaveDeadSocket(installed.folders.socket());
        } else if (there == QLatin1String("file")) {
            QFile file(installed.folders.socket());
            QVERIFY(file.open(QIODevice::WriteOnly));
        } else if (there == QLatin1String("nowhere")) {
            installed.folders.unset("XDG_RUNTIME_DIR");
            test::RuntimeFolders::makeFolder(installed.folders.fallback(), 0777);
        }
        const test::Ended ended =
            installed.run({QStringLiteral("no sé"), QString(), QStringLiteral("$x '\"")});
        QCOMPARE(ended.output, QStringLiteral("<no sé><><$x '\">"));
        QCOMPARE(ended.exitCode, kProgramsCode);
    }

    void whatItLeavesToTheProgramIsNotSaid_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::newRow("an option") << QStringList{QStringLiteral("--version")};
        QTest::newRow("an option behind an action")
            << QStringList{QStringLiteral("area"), QStringLiteral("--ports")};
        QTest::newRow("another display") << QStringList{
            QStringLiteral("area"), QStringLiteral("-display"), QStringLiteral(":3")};
        QTest::newRow("more than a line holds")
            << QStringList{QString(BRINDLECAM_LONGEST_LINE, QLatin1Char('x'))};
    }
    void whatItLeavesToTheProgramIsNotSaid()
    {
        QFETCH(QStringList, words);
        const Installed installed;
        installed.addProgram();
        const Parrot copy(installed.folders.socket(), "0\n");
        const test::Ended ended = installed.run(words);
        QCOMPARE(ended.exitCode, kProgramsCode);
        QCOMPARE(ended.output,
                 QLatin1Char('<') + words.join(QLatin1String("><")) + QLatin1Char('>'));
        QCOMPARE(copy.heard, QByteArray());
    }

    void aLineIsSaidUpToItsLongest()
    {
        const Installed installed;
        installed.addProgram();
        const Parrot copy(installed.folders.socket(), "0\n");
        // "1 ", three bytes for each, " %2F" and the line's end.
        const QString longest((BRINDLECAM_LONGEST_LINE - 7) / 3, QLatin1Char('\n'));
        QCOMPARE(longest.size() * 3 + 7, BRINDLECAM_LONGEST_LINE);
        QCOMPARE(runInRoot(installed, longest).exitCode, 0);
        QCOMPARE(copy.heard.size(), BRINDLECAM_LONGEST_LINE);
        QCOMPARE(runInRoot(installed, longest + QLatin1Char('\n')).exitCode, kProgramsCode);
        QCOMPARE(copy.heard.size(), BRINDLECAM_LONGEST_LINE);
    }

    void nothingIsPrintedToTheRunningCopy()
    {
        const Installed installed;
        const Parrot copy(installed.folders.socket(), "4\nAhora no.\n");
        const test::Ended ended = installed.folders.run(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), QStringLiteral("exec \"$0\" 1>&- 2>&-"), installed.launcher()});
        QCOMPARE(ended.exitCode, 4);
        QCOMPARE(copy.heard.count('\n'), 1);
    }

    // Stopped, for one: its connections wait until there is no room for more.
    void aCopyThatTakesNoConnectionIsUnanswered()
    {
        const Installed installed;
        installed.addProgram();
        const int end = listenDeaf(installed.folders.socket());
        const int first = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_un address = addressOf(installed.folders.socket());
        QCOMPARE(::connect(first, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        const test::Ended ended = installed.run({QStringLiteral("area")});
        QCOMPARE(ended.exitCode, Commands::unansweredReply().exitCode);
        QCOMPARE(ended.error, QString::fromUtf8(Commands::unansweredReply().text));
        ::close(first);
        ::close(end);
    }

    // The running copy may have begun with it: the program would do it once more.
    void whatWasSaidIsNeverSaidAgain_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<Manners>("manners");
        constexpr auto kHangsUp = Manners::hangsUp;
        QTest::newRow("silent") << QByteArray() << Manners::stays;
        QTest::newRow("hangs up") << QByteArray() << kHangsUp;
        QTest::newRow("never comes to an end") << QByteArray("0\nBien") << Manners::stays;
        QTest::newRow("always says a little more") << QByteArray("0\nBien") << Manners::goesOn;
        QTest::newRow("no code") << QByteArray("\nBien") << kHangsUp;
        QTest::newRow("no number") << QByteArray("ok\n") << kHangsUp;
        QTest::newRow("a code with words") << QByteArray("0 ok\n") << kHangsUp;
        QTest::newRow("a code written otherwise") << QByteArray("00\n") << kHangsUp;
        QTest::newRow("a code below zero") << QByteArray("-1\n") << kHangsUp;
        QTest::newRow("a code that nothing ends with") << QByteArray("256\n") << kHangsUp;
        QTest::newRow("a code that is too long") << QByteArray("4294967296\n") << kHangsUp;
        QTest::newRow("a code without its line's end") << QByteArray("0") << kHangsUp;
        QTest::newRow("more than anybody says")
            << "0\n" + QByteArray(BRINDLECAM_LONGEST_ANSWER - 1, 'x') << kHangsUp;
    }
    void whatWasSaidIsNeverSaidAgain()
    {
        QFETCH(QByteArray, answer);
        QFETCH(Manners, manners);
        const Installed installed;
        installed.addProgram();
        const Parrot copy(installed.folders.socket(), answer, manners);
        const test::Ended ended = installed.run({QStringLiteral("area")});
        const InstanceReply reply = Commands::unansweredReply();
        QCOMPARE(ended.exitCode, reply.exitCode);
        QCOMPARE(ended.error, QString::fromUtf8(reply.text));
        QCOMPARE(ended.output, QString());
        QCOMPARE(copy.heard.count('\n'), 1);
    }

    void aCopyOfAnotherVersionIsHeard()
    {
        const Installed installed;
        const InstanceReply reply = Commands::otherVersionReply();
        const Parrot copy(installed.folders.socket(),
                          QByteArray::number(reply.exitCode) + '\n' + reply.text);
        const test::Ended ended = installed.run({QStringLiteral("area")});
        QCOMPARE(ended.exitCode, reply.exitCode);
        QCOMPARE(ended.error, QString::fromUtf8(reply.text));
    }

    void aFolderThatIsGoneIsNone()
    {
        const Installed installed;
        const Parrot copy(installed.folders.socket(), "0\n");
        const test::Ended ended = installed.folders.run(
            QStringLiteral("/bin/sh"), {QStringLiteral("-c"),
                                        QStringLiteral("mkdir \"$TMPDIR/x\" && cd \"$TMPDIR/x\" && "
                                                       "rmdir \"$TMPDIR/x\" && exec \"$0\" area"),
                                        installed.launcher()});
        QCOMPARE(ended.exitCode, 0);
        QCOMPARE(copy.heard, QByteArray("1 area \n"));
    }

    void aLinkToTheLauncherFindsTheProgram()
    {
        const Installed installed;
        installed.addProgram();
        const QString link = installed.folders.temporary() + QStringLiteral("/captura");
        QVERIFY(QFile::link(installed.launcher(), link));
        QCOMPARE(installed.folders.run(link, {QStringLiteral("area")}).output,
                 QStringLiteral("<area>"));
    }

    void aProgramThatIsMissingIsTold()
    {
        const Installed installed;
        const test::Ended ended = installed.run({QStringLiteral("area")});
        QCOMPARE(ended.exitCode, 127);
        QVERIFY2(ended.error.contains(QLatin1String("una carpeta")) &&
                     ended.error.contains(QLatin1String(BRINDLECAM_PROGRAM_FROM_LAUNCHER)),
                 qPrintable(ended.error));
    }
};

BRINDLECAM_TEST(TestLauncher);

} // namespace brindlecam

#include "tst_launcher.moc"
