#include "RuntimeFolders.h"
#include "app/Commands.h"
#include "app/InstanceProtocol.h"
#include "app/InstanceServer.h"
#include "support/TestCase.h"

#include <QLocalServer>
#include <QLocalSocket>

#include <sys/socket.h>
#include <sys/un.h>

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

/// A running copy that says what it is told to, right or wrong, and keeps what it was asked.
class Parrot final {
public:
    Parrot(const QString& path, QByteArray says, bool hangsUp = true)
        : m_says(std::move(says))
        , m_hangsUp(hangsUp)
    {
        QVERIFY(m_server.listen(path));
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            QLocalSocket* client = m_server.nextPendingConnection();
            QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] {
                heard += client->readAll();
                if (!heard.endsWith('\n'))
                    return;
                client->write(m_says);
                if (m_hangsUp)
                    client->disconnectFromServer();
            });
        });
    }

    QByteArray heard;

private:
    QLocalServer m_server;
    const QByteArray m_says;
    const bool m_hangsUp;
};

/// A file that looks like a socket and is none any more, as a crash leaves it.
void leaveDeadSocket(const QString& path)
{
    const int end = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path);
    QCOMPARE(::bind(end, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(end);
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
        const QByteArray text = QByteArray(300'000, 'x') + '\n';
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

    void theLongestLineIsSaid()
    {
        const Installed installed;
        const Parrot copy(installed.folders.socket(), "0\n");
        const qsizetype rest = 3 * QFile::encodeName(QDir::currentPath()).size() + 16;
        const QByteArray word((BRINDLECAM_LONGEST_LINE - rest) / 3, '\n');
        QCOMPARE(installed.run({QString::fromLatin1(word)}).exitCode, 0);
        QVERIFY(copy.heard.size() > BRINDLECAM_LONGEST_LINE - rest);
        QVERIFY(copy.heard.startsWith("1 %0A%0A"));
    }

    // The running copy may have begun with it: the program would do it once more.
    void whatWasSaidIsNeverSaidAgain_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("hangsUp");
        QTest::newRow("silent") << QByteArray() << false;
        QTest::newRow("hangs up") << QByteArray() << true;
        QTest::newRow("never comes to an end") << QByteArray("0\nBien") << false;
        QTest::newRow("no code") << QByteArray("\nBien") << true;
        QTest::newRow("no number") << QByteArray("ok\n") << true;
        QTest::newRow("a code with words") << QByteArray("0 ok\n") << true;
        QTest::newRow("a code written otherwise") << QByteArray("00\n") << true;
        QTest::newRow("a code below zero") << QByteArray("-1\n") << true;
        QTest::newRow("a code that is too long") << QByteArray("4294967296\n") << true;
        QTest::newRow("a code without its line's end") << QByteArray("0") << true;
        QTest::newRow("more than anybody says")
            << "0\n" + QByteArray(BRINDLECAM_LONGEST_ANSWER, 'x') << true;
    }
    void whatWasSaidIsNeverSaidAgain()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, hangsUp);
        const Installed installed;
        installed.addProgram();
        const Parrot copy(installed.folders.socket(), answer, hangsUp);
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
