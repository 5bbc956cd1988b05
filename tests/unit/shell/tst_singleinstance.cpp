// Covers InstancePlace.
#include "shell/SingleInstance.h"
#include "support/TestCase.h"

#include <QFile>
#include <QLocalServer>
#include <QProcess>
#include <QTemporaryDir>

#include <future>

namespace brindlecam {

namespace {

constexpr int kChildPatience = 20000; // ms; generous for a busy machine

/// A copy of the program in a process of its own.
class Copy final {
public:
    struct Options {
        const char* display = ":1";
        int startTime = 0; ///< milliseconds
    };

    Copy(const QTemporaryDir& folder, const QStringList& words, const Options& options)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
        environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(options.display));
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(BRINDLECAM_INSTANCE_CHILD),
                        QStringList(QString::number(options.startTime)) + words);
    }
    Copy(const QTemporaryDir& folder, const char* word)
        : Copy(folder, {QString::fromLatin1(word)}, Options())
    {
    }
    ~Copy() { kill(); }

    /// As by the kernel: nothing is tidied up.
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(kChildPatience);
    }
    [[nodiscard]] bool ends()
    {
        return m_process.state() == QProcess::NotRunning ||
               m_process.waitForFinished(kChildPatience);
    }
    [[nodiscard]] bool hasEnded() const { return m_process.state() == QProcess::NotRunning; }
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }
    /// Waits for this many words on stdout and answers all there are.
    [[nodiscard]] QStringList words(int count)
    {
        const auto enough = [&] {
            m_output += m_process.readAllStandardOutput();
            return m_output.count('\n') >= count;
        };
        if (!QTest::qWaitFor(enough, kChildPatience))
            return {};
        return QString::fromLatin1(m_output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    [[nodiscard]] QByteArray complaints() { return m_process.readAllStandardError(); }

private:
    QProcess m_process;
    QByteArray m_output;
};

/// Where the copies of display :1 meet in this folder.
InstancePlace placeIn(const QTemporaryDir& folder)
{
    return {folder.filePath(QStringLiteral("brindlecam-:1.socket")),
            folder.filePath(QStringLiteral("brindlecam-:1.lock"))};
}

} // namespace

/// Time that passes only while a copy waits. The first instants are those of the lock's file.
struct WaitingClock {
    QDateTime now = QDateTime::currentDateTimeUtc();
    int pauses = 0;
    std::function<void()> onPause;

    [[nodiscard]] SingleInstance::Waiting waiting()
    {
        return {.answer = std::chrono::milliseconds(100),
                .now = [this] { return now; },
                .pause =
                    [this](std::chrono::milliseconds time) {
                        ++pauses;
                        now = now.addMSecs(time.count());
                        if (onPause)
                            onPause();
                    }};
    }
};

namespace {

template <typename Kind>
bool is(const SingleInstance::Outcome& outcome)
{
    return std::holds_alternative<Kind>(outcome);
}
using First = SingleInstance::First;
using Unanswered = SingleInstance::Unanswered;

InstanceAnswer yes(const InstanceRequest&)
{
    return {};
}

} // namespace

class TestSingleInstance final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theFirstRunsAndLaterOnesHandOverAndEnd()
    {
        const QTemporaryDir folder;
        Copy first(folder, {}, {});
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

        Copy fourth(folder, {}, {});
        QVERIFY(fourth.ends());
        QCOMPARE(first.words(5).mid(2),
                 QStringList({QStringLiteral("area"), QStringLiteral("recents"),
                              QStringLiteral("reopen")}));
    }

    void eachDisplayHasItsOwn()
    {
        const QTemporaryDir folder;
        Copy one(folder, {QStringLiteral("area")}, {.display = ":1"});
        QCOMPARE(one.words(2).size(), 2);
        Copy other(folder, {QStringLiteral("area")}, {.display = ":2"});
        QCOMPARE(other.words(2), QStringList({QStringLiteral("first"), QStringLiteral("area")}));
        Copy toTheOther(folder, {QStringLiteral("fullScreen")}, {.display = ":2.0"});
        QVERIFY(toTheOther.ends());
        QCOMPARE(other.words(3).value(2), QStringLiteral("fullScreen"));
        Copy toTheFirst(folder, {QStringLiteral("fullScreen"), QString()}, {.display = "unix:1.1"});
        QVERIFY(toTheFirst.ends());
        QCOMPARE(one.words(3).value(2), QStringLiteral("fullScreen "));
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
        Copy one(folder, {QStringLiteral("area")}, {.startTime = startTime});
        Copy other(folder, {QStringLiteral("fullScreen")}, {.startTime = startTime});
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
        const InstancePlace place = placeIn(folder);
        Copy killed(folder, {}, {});
        QCOMPARE(killed.words(2).size(), 2);
        killed.kill();
        QVERIFY(QFile::exists(place.socket));
        QVERIFY(QFile::exists(place.lock));

        WaitingClock patience;
        SingleInstance next(place, patience.waiting());
        QVERIFY(is<First>(next.handOver({})));
        QCOMPARE(patience.pauses, 0);
        QVERIFY(next.listen(yes));

        Copy later(folder, "area");
        QTRY_VERIFY_WITH_TIMEOUT(later.hasEnded(), kChildPatience);
        QCOMPARE(later.exitCode(), 0);
    }

    void aCopyThatEndsWhileItStartsMakesWay()
    {
        const QTemporaryDir folder;
        auto starting = std::make_unique<SingleInstance>(placeIn(folder));
        QVERIFY(is<First>(starting->handOver({})));
        WaitingClock patience;
        patience.onPause = [&] {
            if (patience.pauses == 3)
                starting.reset();
        };
        SingleInstance knocking(placeIn(folder), patience.waiting());
        QVERIFY(is<First>(knocking.handOver({{"area"}, {}})));
        QCOMPARE(patience.pauses, 3);
    }

    void whoComesWhileACopyEndsTakesItsPlace_data()
    {
        QTest::addColumn<int>("ranFor");
        QTest::addColumn<int>("endsFor");
        QTest::newRow("at once") << 0 << 1;
        QTest::newRow("after a day") << 24 * 3600 << 1;
        QTest::newRow("after a day, and it encodes for long") << 24 * 3600 << 50;
    }
    void whoComesWhileACopyEndsTakesItsPlace()
    {
        QFETCH(int, ranFor);
        QFETCH(int, endsFor);
        const QTemporaryDir folder;
        WaitingClock patience;
        auto ending = std::make_unique<SingleInstance>(placeIn(folder), patience.waiting());
        QVERIFY(is<First>(ending->handOver({})));
        QVERIFY(ending->listen(yes));
        patience.now = patience.now.addSecs(ranFor);
        ending->hangUp();
        QVERIFY(!QFile::exists(placeIn(folder).socket));
        const QDateTime end = patience.now.addSecs(endsFor);
        patience.onPause = [&] {
            if (patience.now >= end)
                ending.reset();
        };
        SingleInstance next(placeIn(folder), patience.waiting());
        QVERIFY(is<First>(next.handOver({})));
        QCOMPARE(patience.pauses, endsFor * 1000 / 20);
        QVERIFY(next.listen(yes));
    }

    void aCopyThatNeverStartsIsGivenUp()
    {
        const QTemporaryDir folder;
        SingleInstance holder(placeIn(folder));
        QVERIFY(is<First>(holder.handOver({})));
        WaitingClock patience;
        QFile lock(placeIn(folder).lock);
        QVERIFY(lock.open(QIODevice::ReadWrite | QIODevice::ExistingOnly));
        QVERIFY(lock.setFileTime(patience.now, QFileDevice::FileModificationTime));
        lock.close();
        SingleInstance later(placeIn(folder), patience.waiting());
        QVERIFY(is<Unanswered>(later.handOver({{"area"}, {}})));
        // Ten seconds from the holder's start.
        QCOMPARE(patience.pauses, 10 * 1000 / 20);
    }

    void clocksThatAreWrongKeepNobodyForGood()
    {
        const QTemporaryDir folder;
        SingleInstance holder(placeIn(folder));
        QVERIFY(is<First>(holder.handOver({})));
        WaitingClock patience;
        patience.now = patience.now.addDays(-1);
        SingleInstance later(placeIn(folder), patience.waiting());
        QVERIFY(is<Unanswered>(later.handOver({{"area"}, {}})));
        QCOMPARE(patience.pauses, 70 * 1000 / 20);
    }

    void aCopyThatListensButDoesNotAnswerIsGivenUpSoon()
    {
        const QTemporaryDir folder;
        SingleInstance holder(placeIn(folder));
        QVERIFY(is<First>(holder.handOver({})));
        QLocalServer mute;
        QVERIFY(mute.listen(placeIn(folder).socket));
        WaitingClock patience;
        SingleInstance later(placeIn(folder), patience.waiting());
        QVERIFY(is<Unanswered>(later.handOver({{"area"}, {}})));
        QCOMPARE(patience.pauses, 0);
    }

    void aCopyThatCannotListenIsToldAtOnce_data()
    {
        QTest::addColumn<bool>("socketIsLost");
        QTest::newRow("no place for a socket") << false;
        QTest::newRow("the socket was removed") << true;
    }
    void aCopyThatCannotListenIsToldAtOnce()
    {
        QFETCH(bool, socketIsLost);
        const QTemporaryDir folder;
        InstancePlace place = placeIn(folder);
        if (!socketIsLost)
            place.socket = folder.filePath(QStringLiteral("no/such/folder/socket"));
        SingleInstance deaf(place);
        QVERIFY(is<First>(deaf.handOver({})));
        QCOMPARE(deaf.listen(yes), socketIsLost);
        WaitingClock patience;
        if (socketIsLost) {
            QVERIFY(QFile::remove(place.socket));
            patience.now = patience.now.addSecs(60);
        }
        SingleInstance later(place, patience.waiting());
        QVERIFY(is<Unanswered>(later.handOver({})));
        QCOMPARE(patience.pauses, 0);
    }

    void whereNoLockCanBeMadeTheRunningCopyIsAskedAllTheSame()
    {
        const QTemporaryDir folder;
        InstancePlace place = placeIn(folder);
        place.lock = folder.filePath(QStringLiteral("no/such/folder/lock"));
        InstanceServer server([](const InstanceRequest&) { return InstanceAnswer{{7, ""}}; });
        QVERIFY(server.listen(place.socket));
        SingleInstance::Waiting waiting;
        waiting.answer = std::chrono::milliseconds(kChildPatience);
        auto later = std::async(std::launch::async, [&place, &waiting] {
            return SingleInstance(place, waiting).handOver({});
        });
        QVERIFY(QTest::qWaitFor(
            [&] { return later.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
            kChildPatience));
        const SingleInstance::Outcome outcome = later.get();
        QVERIFY(is<InstanceReply>(outcome));
        QCOMPARE(std::get<InstanceReply>(outcome).exitCode, 7);
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
        SingleInstance instance(folder.isEmpty() ? InstancePlace()
                                                 : InstancePlace{folder + QStringLiteral("/socket"),
                                                                 folder + QStringLiteral("/lock")});
        QVERIFY(is<First>(instance.handOver({})));
        QVERIFY(!instance.listen(yes));
    }
};

BRINDLECAM_TEST(TestSingleInstance);

} // namespace brindlecam

#include "tst_singleinstance.moc"
