#include "app/SingleInstance.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLocalServer>
#include <QProcess>
#include <QTemporaryDir>

#include <thread>

namespace brindlecam {

namespace {

constexpr int kProcessPatience = 20000; // ms; generous for a busy machine

/// A copy of the program in a process of its own.
class Copy final {
public:
    Copy(const QTemporaryDir& folder, const char* action, int startTime = 0)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(BRINDLECAM_INSTANCE_CHILD),
                        {QString::fromLatin1(action), QString::number(startTime)});
    }
    ~Copy() { kill(); }

    /// As by the kernel: nothing is tidied up.
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(kProcessPatience);
    }
    [[nodiscard]] bool ends()
    {
        return m_process.state() == QProcess::NotRunning ||
               m_process.waitForFinished(kProcessPatience);
    }
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }
    /// Waits for this many words on stdout and answers all there are.
    [[nodiscard]] QStringList words(int count)
    {
        const auto enough = [&] {
            m_output += m_process.readAllStandardOutput();
            return m_output.count('\n') >= count;
        };
        if (!QTest::qWaitFor(enough, kProcessPatience))
            return {};
        return QString::fromLatin1(m_output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    [[nodiscard]] QByteArray complaints() { return m_process.readAllStandardError(); }

private:
    QProcess m_process;
    QByteArray m_output;
};

} // namespace

class TestSingleInstance final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theFirstRunsAndLaterOnesHandOverAndEnd()
    {
        const QTemporaryDir folder;
        Copy first(folder, "reopen");
        QCOMPARE(first.words(2), QStringList({QStringLiteral("first"), QStringLiteral("reopen")}));

        Copy second(folder, "area");
        QVERIFY(second.ends());
        QCOMPARE(second.words(1), QStringList(QStringLiteral("performed")));
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.complaints(), QByteArray());

        Copy third(folder, "recents");
        QVERIFY(third.ends());
        QCOMPARE(third.words(1), QStringList(QStringLiteral("unavailable")));
        QCOMPARE(third.exitCode(), 3);

        Copy fourth(folder, "reopen");
        QVERIFY(fourth.ends());
        QCOMPARE(first.words(5).mid(2),
                 QStringList({QStringLiteral("area"), QStringLiteral("recents"),
                              QStringLiteral("reopen")}));
    }

    void ofTwoStartedAtOnceOneRunsAndBothArePerformed_data()
    {
        QTest::addColumn<int>("startTime");
        for (const int startTime : {0, 0, 0, 5, 50, 400})
            QTest::addRow("listens after %d ms", startTime) << startTime;
    }
    void ofTwoStartedAtOnceOneRunsAndBothArePerformed()
    {
        QFETCH(int, startTime);
        const QTemporaryDir folder;
        Copy one(folder, "area", startTime);
        Copy other(folder, "fullScreen", startTime);
        const QString oneSays = one.words(1).value(0);
        const QString otherSays = other.words(1).value(0);
        QCOMPARE(QSet<QString>({oneSays, otherSays}),
                 QSet<QString>({QStringLiteral("first"), QStringLiteral("performed")}));
        Copy& winner = oneSays == QLatin1String("first") ? one : other;
        Copy& loser = oneSays == QLatin1String("first") ? other : one;
        QVERIFY(loser.ends());
        const QStringList performed = winner.words(3).mid(1);
        QCOMPARE(QSet<QString>(performed.begin(), performed.end()),
                 QSet<QString>({QStringLiteral("area"), QStringLiteral("fullScreen")}));
        QCOMPARE(performed.size(), 2);
    }

    void whatAKilledRunLeftIsTakenOverAtOnce()
    {
        const QTemporaryDir folder;
        Copy killed(folder, "reopen");
        QCOMPARE(killed.words(2).size(), 2);
        killed.kill();
        QVERIFY(QFile::exists(folder.filePath(QStringLiteral("brindlecam.socket"))));
        QVERIFY(QFile::exists(folder.filePath(QStringLiteral("brindlecam.lock"))));

        QElapsedTimer clock;
        clock.start();
        SingleInstance next(folder.path());
        QCOMPARE(next.handOver({}), SingleInstance::Outcome::first);
        QVERIFY2(clock.elapsed() < 1000, "without waiting");
        QVERIFY(next.listen([](const InstanceRequest&) { return InstanceReply::performed; }));

        Copy later(folder, "area");
        QTRY_VERIFY(!later.words(1).isEmpty());
        QCOMPARE(later.words(1), QStringList(QStringLiteral("performed")));
    }

    void aCopyThatEndsWhileAnotherKnocksMakesWay()
    {
        const QTemporaryDir folder;
        auto starting = std::make_unique<Copy>(folder, "reopen", 60000);
        QCOMPARE(starting->words(1), QStringList(QStringLiteral("first")));
        Copy knocking(folder, "area");
        QVERIFY(knocking.words(0).isEmpty());
        starting.reset();
        QCOMPARE(knocking.words(2), QStringList({QStringLiteral("first"), QStringLiteral("area")}));
    }

    void aCopyThatListensButDoesNotAnswerIsGivenUpSoon()
    {
        const QTemporaryDir folder;
        SingleInstance holder(folder.path());
        QCOMPARE(holder.handOver({}), SingleInstance::Outcome::first);
        QLocalServer mute;
        QVERIFY(mute.listen(folder.filePath(QStringLiteral("brindlecam.socket"))));

        QElapsedTimer clock;
        clock.start();
        SingleInstance later(folder.path());
        QCOMPARE(later.handOver({CaptureAction::area}), SingleInstance::Outcome::unanswered);
        QVERIFY2(clock.elapsed() >= 1900 && clock.elapsed() < 6000,
                 qPrintable(QString::number(clock.elapsed())));
    }

    void aFolderThatCannotHoldALockStopsNobody_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("missing") << QStringLiteral("/proc/no-such-folder");
        QTest::newRow("none at all") << QString();
    }
    void aFolderThatCannotHoldALockStopsNobody()
    {
        QFETCH(QString, folder);
        SingleInstance instance(folder);
        QCOMPARE(instance.handOver({}), SingleInstance::Outcome::first);
        QVERIFY(!instance.listen([](const InstanceRequest&) { return InstanceReply::performed; }));
        QVERIFY(!QFile::exists(QStringLiteral("/brindlecam.lock")));
    }
};

BRINDLECAM_TEST(TestSingleInstance);

} // namespace brindlecam

#include "tst_singleinstance.moc"
