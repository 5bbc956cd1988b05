#include "desktop/support/Patience.h"

#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace brindlecam::desktop {

/// The program that runs a command on a desktop of its own, as the tests of ports are.
class TestPrivateDesktop final : public QObject {
    Q_OBJECT

    QProcess m_process;

    /// Starts it with these words, or with a small screen and a shell's script.
    void start(const QStringList& words)
    {
        m_process.start(qEnvironmentVariable("BRINDLECAM_PRIVATE_DESKTOP"), words);
    }
    void startScript(const QString& script)
    {
        start({QStringLiteral("320x200"), QStringLiteral("sh"), QStringLiteral("-c"), script});
    }

    [[nodiscard]] bool ends() { return m_process.waitForFinished(kPatience); }
    [[nodiscard]] QByteArray line()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(kPatience))
                return {};
        }
        return m_process.readLine().trimmed();
    }
    [[nodiscard]] static bool lives(const QByteArray& pid)
    {
        return QFileInfo::exists(QStringLiteral("/proc/") + QString::fromLatin1(pid));
    }

private Q_SLOTS:
    void init() { m_process.setProcessChannelMode(QProcess::SeparateChannels); }
    void cleanup()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.kill();
        (void)ends();
    }

    void commandHasAScreenOfTheSize()
    {
        start({QStringLiteral("--window-manager"), QStringLiteral("--compositor"),
               QStringLiteral("640x480"), QStringLiteral("xrandr")});
        QVERIFY(ends());
        QCOMPARE(m_process.exitCode(), 0);
        QVERIFY(m_process.readAllStandardOutput().contains("current 640 x 480"));
    }

    void commandSpeaksForItself()
    {
        startScript(QStringLiteral("cat; echo wrong >&2"));
        m_process.write("what comes in\n");
        m_process.closeWriteChannel();
        QVERIFY(ends());
        QCOMPARE(m_process.readAllStandardOutput(), QByteArray("what comes in\n"));
        QCOMPARE(m_process.readAllStandardError(), QByteArray("wrong\n"));
    }

    void commandsEndIsItsOwn_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("code");
        QTest::newRow("success") << QStringLiteral("true") << 0;
        QTest::newRow("failure") << QStringLiteral("exit 7") << 7;
        QTest::newRow("a signal") << QStringLiteral("kill -KILL $$") << 128 + SIGKILL;
    }
    void commandsEndIsItsOwn()
    {
        QFETCH(QString, script);
        startScript(script);
        QVERIFY(ends());
        QCOMPARE(m_process.exitStatus(), QProcess::NormalExit);
        QTEST(m_process.exitCode(), "code");
    }

    void whatIsNoOrderIsRefused_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("code");
        QTest::newRow("no command") << QStringList{QStringLiteral("320x200")} << 2;
        QTest::newRow("no size") << QStringList{QStringLiteral("true"), QStringLiteral("true")}
                                 << 2;
        QTest::newRow("no such option")
            << QStringList{QStringLiteral("--fast"), QStringLiteral("320x200"),
                           QStringLiteral("true")}
            << 2;
        QTest::newRow("no such program")
            << QStringList{QStringLiteral("320x200"), QStringLiteral("nobody-is-called-this")}
            << 127;
    }
    void whatIsNoOrderIsRefused()
    {
        QFETCH(QStringList, words);
        start(words);
        QVERIFY(ends());
        QTEST(m_process.exitCode(), "code");
        QVERIFY(!m_process.readAllStandardError().isEmpty());
    }

    void signalsAreTheCommands_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("asked to end") << SIGTERM;
        QTest::newRow("interrupted") << SIGINT;
        QTest::newRow("hung up") << SIGHUP;
    }
    void signalsAreTheCommands()
    {
        QFETCH(int, signal);
        startScript(QStringLiteral("trap 'exit 5' TERM INT HUP; sleep 1000 & echo ready; wait"));
        QCOMPARE(line(), QByteArray("ready"));
        ::kill(static_cast<pid_t>(m_process.processId()), signal);
        QVERIFY(ends());
        QCOMPARE(m_process.exitCode(), 5);
    }

    void nothingLivesOn()
    {
        // Beside the command: server and window manager, and what it starts and forgets.
        start({QStringLiteral("--window-manager"), QStringLiteral("320x200"), QStringLiteral("sh"),
               QStringLiteral("-c"),
               QStringLiteral("(setsid sleep 1000 & echo $!); cat /proc/$PPID/task/$PPID/children; "
                              "echo; read answer")});
        const QByteArray forgotten = line();
        const QByteArrayList others = line().split(' ');
        QCOMPARE(others.size(), 4); // the forgotten one is ours already
        for (const QByteArray& pid : others + QByteArrayList{forgotten})
            QVERIFY(lives(pid));
        m_process.closeWriteChannel();
        QVERIFY(ends());
        for (const QByteArray& pid : others + QByteArrayList{forgotten})
            QVERIFY(!lives(pid));
    }

    void commandAndScreenEndWhenItIsKilled()
    {
        startScript(QStringLiteral("cat /proc/$PPID/task/$PPID/children; echo; exec sleep 1000"));
        const QByteArrayList children = line().split(' ');
        QCOMPARE(children.size(), 2);
        m_process.kill();
        QVERIFY(ends());
        for (const QByteArray& pid : children)
            QVERIFY(waitUntil([&] { return !lives(pid); }));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPrivateDesktop)

#include "tst_privatedesktop.moc"
