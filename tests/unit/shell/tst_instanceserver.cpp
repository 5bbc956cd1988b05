#include "shell/InstanceProtocol.h"
#include "shell/InstanceServer.h"
#include "support/TestCase.h"

#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <csignal>

namespace brindlecam {

namespace {

/// Line feed and folder included.
QByteArray lineOf(const QByteArrayList& words)
{
    return InstanceMessages::line({words, "/"});
}

} // namespace

/// A listening server that notes what it is asked and what it carries out. Its clients may take
/// this long for a line; the usual time is long enough for a busy machine.
struct RunningServer {
    explicit RunningServer(std::chrono::milliseconds patience = std::chrono::seconds(20))
        : server([this](const InstanceRequest& request) { return answer(request); }, patience)
    {
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("socket"));
    QByteArrayList asked;
    QByteArrayList done;
    std::function<void()> onAsked;
    InstanceServer server;

    InstanceAnswer answer(const InstanceRequest& request)
    {
        asked << request.words.join(' ');
        if (onAsked)
            onAsked();
        if (request.words.contains("recents"))
            return {{3, "No.\n"}};
        return {{0, ""}, [this, what = asked.last()] { done << what; }};
    }
    QByteArray answerTo(const QByteArray& sent) const
    {
        QLocalSocket client;
        client.connectToServer(path);
        client.write(sent);
        const bool ended = QTest::qWaitFor(
            [&client] { return client.state() == QLocalSocket::UnconnectedState; }, 5000);
        return ended ? client.readAll() : QByteArray("still connected");
    }
};

class TestInstanceServer final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    // As in the program: Qt sees to it once, but its test library (6.4) listens to it again in each
    // class. Drop it when that leaves alone what is ignored.
    void initTestCase() { std::signal(SIGPIPE, SIG_IGN); }

    void aRequestIsAnsweredOnceAndCarriedOut()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo(lineOf({"area"})), QByteArray("0\n"));
        QCOMPARE(running.answerTo(lineOf({"recents"})), QByteArray("3\nNo.\n"));
        QCOMPARE(running.answerTo(lineOf({})), QByteArray("0\n"));
        QCOMPARE(running.asked, QByteArrayList({"area", "recents", ""}));
        QCOMPARE(running.done, QByteArrayList({"area", ""}));
    }

    void whatIsAskedIsDoneBeforeTheNextIsAsked()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        std::vector<std::unique_ptr<QLocalSocket>> clients;
        running.onAsked = [&running] { QCOMPARE(running.done.size(), running.asked.size() - 1); };
        for (int i = 0; i < 3; ++i) {
            clients.push_back(std::make_unique<QLocalSocket>());
            clients.back()->connectToServer(running.path);
            clients.back()->write(lineOf({"area"}));
            clients.back()->flush();
        }
        QTRY_COMPARE(running.done.size(), 3);
    }

    void whoHasLeftIsNotServed()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        {
            // A connection is made and its line delivered before the server looks at it.
            QLocalSocket gone;
            gone.connectToServer(running.path);
            QVERIFY(gone.waitForConnected());
            gone.write(lineOf({"area"}));
            QVERIFY(gone.waitForBytesWritten());
        }
        QCOMPARE(running.answerTo(lineOf({"fullScreen"})), QByteArray("0\n"));
        QCOMPARE(running.asked, QByteArrayList({"fullScreen"}));
        QCOMPARE(running.done, QByteArrayList({"fullScreen"}));
    }

    void nothingIsDoneForWhoLeavesBeforeTheAnswer()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        QLocalSocket impatient;
        impatient.connectToServer(running.path);
        running.onAsked = [&impatient] { impatient.abort(); };
        impatient.write(lineOf({"area"}));
        impatient.flush();
        QTRY_COMPARE(running.asked.size(), 1);
        running.onAsked = {};
        QCOMPARE(running.answerTo(lineOf({"fullScreen"})), QByteArray("0\n"));
        QCOMPARE(running.done, QByteArrayList({"fullScreen"}));
    }

    void whoHasSaidAllIsStillServed()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        QLocalSocket client;
        client.connectToServer(running.path);
        client.write(lineOf({"area"}));
        client.flush();
        // As programs do that send their input and then only read.
        QCOMPARE(::shutdown(static_cast<int>(client.socketDescriptor()), SHUT_WR), 0);
        QTRY_COMPARE(running.done.size(), 1);
        QTRY_COMPARE(client.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(client.readAll(), QByteArray("0\n"));
    }

    void anotherVersionIsToldSo()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        const QByteArray answer = running.answerTo("2 area %2F now\n");
        QVERIFY(answer.startsWith("5\n"));
        QVERIFY(answer.contains("otra versión"));
        QVERIFY(running.asked.isEmpty());
    }

    void hangingUpFreesThePathAndLetsEverybodyGo()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        QLocalSocket waiting;
        waiting.connectToServer(running.path);
        waiting.write("1 are");
        waiting.flush();
        // The server has heard of it when it answers the next one.
        QCOMPARE(running.answerTo(lineOf({"recents"})), QByteArray("3\nNo.\n"));
        QLocalSocket knocking;
        knocking.connectToServer(running.path);
        knocking.write(lineOf({"area"}));
        QVERIFY(knocking.waitForBytesWritten());
        running.server.hangUp();
        QVERIFY(!QFile::exists(running.path));
        QTRY_COMPARE(waiting.state(), QLocalSocket::UnconnectedState);
        QTRY_COMPARE(knocking.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(waiting.readAll() + knocking.readAll(), QByteArray());
        QCOMPARE(running.asked, QByteArrayList({"recents"}));
    }

    void onlyTheFirstLineCounts()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo(lineOf({"area"}) + lineOf({"fullScreen"})), QByteArray("0\n"));
        QCOMPARE(running.asked, QByteArrayList({"area"}));
    }

    void anythingElseIsHungUpOn_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("another word") << QByteArray("delete everything\n");
        QTest::newRow("an empty line") << QByteArray("\n");
        QTest::newRow("bytes") << QByteArray("\0\xff\xfe\n", 4);
        QTest::newRow("a request with something before it") << " " + lineOf({"area"});
        QTest::newRow("a line without end") << QByteArray(100000, 'a');
        QTest::newRow("a long line") << lineOf({QByteArray(BRINDLECAM_LONGEST_LINE, 'a')});
        QTest::newRow("half a line and silence") << QByteArray("1 are");
        QTest::newRow("silence") << QByteArray();
    }
    void anythingElseIsHungUpOn()
    {
        QFETCH(QByteArray, sent);
        RunningServer running(std::chrono::milliseconds(300));
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo(sent), QByteArray());
        QVERIFY(running.asked.isEmpty());
        QCOMPARE(running.answerTo(lineOf({"area"})), QByteArray("0\n"));
    }

    void aLineMayBeAsLongAsItIsAllowed()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        const qsizetype rest = lineOf({""}).size();
        const QByteArray longest = lineOf({QByteArray(BRINDLECAM_LONGEST_LINE - rest, 'a')});
        QCOMPARE(longest.size(), qsizetype(BRINDLECAM_LONGEST_LINE));
        QCOMPARE(running.answerTo(longest), QByteArray("0\n"));
    }

    void aLineMayComeInPieces()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        QLocalSocket client;
        client.connectToServer(running.path);
        client.write("1 full");
        client.flush();
        QTest::qWait(0);
        QVERIFY(running.asked.isEmpty());
        client.write("Screen %2F\n");
        QTRY_VERIFY(client.canReadLine());
        QCOMPARE(client.readAll(), QByteArray("0\n"));
        QCOMPARE(running.asked, QByteArrayList({"fullScreen"}));
    }

    void clientsThatLeaveOrHangKeepNobodyWaiting()
    {
        RunningServer running;
        QVERIFY(running.server.listen(running.path));
        std::vector<std::unique_ptr<QLocalSocket>> hanging;
        for (int i = 0; i < 50; ++i) {
            hanging.push_back(std::make_unique<QLocalSocket>());
            hanging.back()->connectToServer(running.path);
            hanging.back()->write("1 ar");
            if (i % 2 == 0)
                hanging.back()->abort();
        }
        QCOMPARE(running.answerTo(lineOf({"area"})), QByteArray("0\n"));
        QCOMPARE(running.asked.size(), qsizetype(1));
    }

    void leftoversInItsPlaceAreReplaced()
    {
        RunningServer running;
        QFile leftover(running.path);
        QVERIFY(leftover.open(QIODevice::WriteOnly));
        leftover.close();
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo(lineOf({"area"})), QByteArray("0\n"));
    }

    void aPlaceThatCannotBeUsedIsSaid()
    {
        RunningServer running;
        QVERIFY(!running.server.listen(running.folder.filePath(QStringLiteral("no/such/folder"))));
    }
};

BRINDLECAM_TEST(TestInstanceServer);

} // namespace brindlecam

#include "tst_instanceserver.moc"
