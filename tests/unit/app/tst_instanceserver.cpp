#include "app/InstanceServer.h"
#include "support/TestCase.h"

#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

/// A listening server that notes what it is asked.
struct Running {
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("socket"));
    std::vector<InstanceRequest> asked;
    InstanceServer server{[this](const InstanceRequest& request) {
                              asked.push_back(request);
                              return request.action == CaptureAction::recents
                                         ? InstanceReply::unavailable
                                         : InstanceReply::performed;
                          },
                          std::chrono::milliseconds(300)};

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

} // namespace

class TestInstanceServer final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyRequestReadsBackAsItself()
    {
        for (const InstanceRequest& request :
             {InstanceRequest{}, InstanceRequest{CaptureAction::area},
              InstanceRequest{CaptureAction::fullScreen},
              InstanceRequest{CaptureAction::recents}}) {
            const QByteArray line = InstanceProtocol::line(request);
            QVERIFY(line.endsWith('\n') && line.size() < InstanceProtocol::kLongestLine);
            QCOMPARE(InstanceProtocol::readRequest(line), std::optional(request));
        }
        QVERIFY(!InstanceProtocol::readRequest("area"));
        QVERIFY(!InstanceProtocol::readReply("ok"));
    }

    void aRequestIsHandledOnceAndAnswered()
    {
        Running running;
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo("area\n"), QByteArray("ok\n"));
        QCOMPARE(running.answerTo("recents\n"), QByteArray("unavailable\n"));
        QCOMPARE(running.answerTo("reopen\n"), QByteArray("ok\n"));
        QCOMPARE(running.asked,
                 (std::vector<InstanceRequest>{
                     {CaptureAction::area}, {CaptureAction::recents}, InstanceRequest{}}));
    }

    void onlyTheFirstLineCounts()
    {
        Running running;
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo("area\nfullScreen\n"), QByteArray("ok\n"));
        QCOMPARE(running.asked, std::vector<InstanceRequest>{{CaptureAction::area}});
    }

    void anythingElseIsHungUpOn_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("another word") << QByteArray("delete everything\n");
        QTest::newRow("an empty line") << QByteArray("\n");
        QTest::newRow("bytes") << QByteArray("\0\xff\xfe\n", 4);
        QTest::newRow("a known word with something before it") << QByteArray(" area\n");
        QTest::newRow("a line without end") << QByteArray(10000, 'a');
        QTest::newRow("a long line") << QByteArray(100, 'a') + '\n';
        QTest::newRow("half a line and silence") << QByteArray("are");
        QTest::newRow("silence") << QByteArray();
    }
    void anythingElseIsHungUpOn()
    {
        QFETCH(QByteArray, sent);
        Running running;
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo(sent), QByteArray());
        QVERIFY(running.asked.empty());
        QCOMPARE(running.answerTo("area\n"), QByteArray("ok\n"));
    }

    void aLineMayComeInPieces()
    {
        Running running;
        QVERIFY(running.server.listen(running.path));
        QLocalSocket client;
        client.connectToServer(running.path);
        client.write("full");
        client.flush();
        QTest::qWait(0);
        QVERIFY(running.asked.empty());
        client.write("Screen\n");
        QTRY_VERIFY(client.canReadLine());
        QCOMPARE(client.readAll(), QByteArray("ok\n"));
        QCOMPARE(running.asked, std::vector<InstanceRequest>{{CaptureAction::fullScreen}});
    }

    void clientsThatLeaveOrHangKeepNobodyWaiting()
    {
        Running running;
        QVERIFY(running.server.listen(running.path));
        std::vector<std::unique_ptr<QLocalSocket>> hanging;
        for (int i = 0; i < 50; ++i) {
            hanging.push_back(std::make_unique<QLocalSocket>());
            hanging.back()->connectToServer(running.path);
            hanging.back()->write("ar");
            if (i % 2 == 0)
                hanging.back()->abort();
        }
        QCOMPARE(running.answerTo("area\n"), QByteArray("ok\n"));
        QCOMPARE(running.asked.size(), std::size_t(1));
    }

    void leftoversInItsPlaceAreReplaced()
    {
        Running running;
        QFile leftover(running.path);
        QVERIFY(leftover.open(QIODevice::WriteOnly));
        leftover.close();
        QVERIFY(running.server.listen(running.path));
        QCOMPARE(running.answerTo("area\n"), QByteArray("ok\n"));
    }

    void aPlaceThatCannotBeUsedIsSaid()
    {
        Running running;
        QVERIFY(!running.server.listen(running.folder.filePath(QStringLiteral("no/such/folder"))));
    }
};

BRINDLECAM_TEST(TestInstanceServer);

} // namespace brindlecam

#include "tst_instanceserver.moc"
