// Covers Fetching, fetch.
#include "feed/FeedRequest.h"
#include "https/HttpsServer.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

namespace brindlecam {

using https::HttpsServer;

namespace {

const QByteArray kBody = "{ \"version\": \"1.2\" }";

struct Answered {
    bool done = false;
    std::optional<QByteArray> body;
};

} // namespace

/// A real host on this machine is asked, and everything that one may do wrong.
class TestFeedRequest final : public test::TestCase {
    Q_OBJECT

private:
    https::Certificates m_certificates;

    /// Asks, trusting our own authority alone.
    Answered ask(const QUrl& address, FeedRequest::Limits limits = {})
    {
        QSslConfiguration security = QSslConfiguration::defaultConfiguration();
        security.setCaCertificates({m_certificates.authority()});
        Answered answered;
        const FeedRequest request(address, "Brindlecam/1.0", security, limits,
                                  [&](std::optional<QByteArray> body) {
                                      answered = {true, std::move(body)};
                                  });
        [&] { QTRY_VERIFY_WITH_TIMEOUT(answered.done, 20000); }();
        return answered;
    }

private Q_SLOTS:
    void bringsWhatTheHostSays()
    {
        HttpsServer host(m_certificates.valid());
        host.answer = HttpsServer::ok(kBody);
        QCOMPARE(ask(host.address()).body, kBody);
        QCOMPARE(host.requests().size(), 1);
        const QByteArray request = host.requests().constFirst();
        QVERIFY(request.startsWith("GET /version.json HTTP/1.1\r\n"));
        QVERIFY(request.contains("\r\nUser-Agent: Brindlecam/1.0\r\n"));
        QVERIFY(!request.contains("If-Modified-Since") && !request.contains("Cookie"));
    }

    void eachTimeAnew()
    {
        HttpsServer host(m_certificates.valid());
        host.answer = "HTTP/1.1 200 OK\r\nCache-Control: max-age=3600\r\nSet-Cookie: a=b\r\n"
                      "Content-Length: 2\r\nConnection: close\r\n\r\n{}";
        QCOMPARE(ask(host.address()).body, QByteArray("{}"));
        QCOMPARE(ask(host.address()).body, QByteArray("{}"));
        QCOMPARE(host.requests().size(), 2);
        QVERIFY(!host.requests().constLast().contains("Cookie"));
    }

    void whoIsNotTrustedIsNotHeard_data()
    {
        QTest::addColumn<https::Identity>("identity");
        QTest::newRow("self-signed") << m_certificates.selfSigned();
        QTest::newRow("expired") << m_certificates.expired();
        QTest::newRow("somebody else's") << m_certificates.ofSomebodyElse();
    }
    void whoIsNotTrustedIsNotHeard()
    {
        QFETCH(https::Identity, identity);
        HttpsServer host(identity);
        host.answer = HttpsServer::ok(kBody);
        QVERIFY(!ask(host.address()).body);
        QVERIFY(host.requests().isEmpty());
    }

    void answersThatAreNoneAreRefused_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("not found")
            << QByteArray("HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\n{}");
        QTest::newRow("an error of the host")
            << QByteArray("HTTP/1.1 500 Oh\r\nContent-Length: 2\r\n\r\n{}");
        QTest::newRow("success of another kind")
            << QByteArray("HTTP/1.1 203 Hm\r\nContent-Length: 2\r\nConnection: close\r\n\r\n{}");
        QTest::newRow("no body") << HttpsServer::ok({});
        QTest::newRow("cut short") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{}");
        QTest::newRow("no HTTP") << QByteArray("220 hello\r\n\r\n");
        QTest::newRow("to plain HTTP") << HttpsServer::redirect("http://localhost:1/version.json");
        QTest::newRow("to a file") << HttpsServer::redirect("file:///etc/hostname");
    }
    void answersThatAreNoneAreRefused()
    {
        QFETCH(QByteArray, answer);
        HttpsServer host(m_certificates.valid());
        host.answer = answer;
        QVERIFY(!ask(host.address()).body);
        QVERIFY(!host.requests().isEmpty());
    }

    void aPlainHostIsNotAskedWhoeverSendsUsThere()
    {
        QTcpServer plain;
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        const QString there =
            QStringLiteral("http://localhost:%1/version.json").arg(plain.serverPort());
        HttpsServer host(m_certificates.valid());
        host.answer = HttpsServer::redirect(there.toLatin1());
        QVERIFY(!ask(host.address()).body);
        QVERIFY(!ask(QUrl(there)).body);
        QVERIFY(!plain.hasPendingConnections());
    }

    void anotherPlaceByHttpsIsFollowed()
    {
        HttpsServer there(m_certificates.valid());
        there.answer = HttpsServer::ok(kBody);
        HttpsServer host(m_certificates.valid());
        host.answer = HttpsServer::redirect(there.address().toEncoded());
        QCOMPARE(ask(host.address()).body, kBody);
    }

    void noMoreIsReadThanAMebibyte_data()
    {
        QTest::addColumn<qsizetype>("size");
        QTest::addColumn<bool>("taken");
        QTest::newRow("as much as may be") << qsizetype(1024 * 1024) << true;
        QTest::newRow("a byte more") << qsizetype(1024 * 1024 + 1) << false;
        QTest::newRow("much more") << qsizetype(8 * 1024 * 1024) << false;
    }
    void noMoreIsReadThanAMebibyte()
    {
        QFETCH(qsizetype, size);
        QFETCH(bool, taken);
        HttpsServer host(m_certificates.valid());
        host.answer = HttpsServer::ok(QByteArray(size, 'x'));
        QCOMPARE(ask(host.address()).body.has_value(), taken);
    }

    void aBodyWithoutAnEndIsGivenUp()
    {
        HttpsServer host(m_certificates.valid());
        qint64 sent = 0;
        host.onRequest = [&sent](QTcpSocket& socket) {
            socket.write("HTTP/1.1 200 OK\r\n\r\n");
            auto* more = new QTimer(&socket);
            QObject::connect(more, &QTimer::timeout, &socket, [&sent, &socket] {
                if (static_cast<QSslSocket&>(socket).encryptedBytesToWrite() == 0)
                    sent += socket.write(QByteArray(64 * 1024, 'x'));
            });
            more->start(0);
        };
        QVERIFY(!ask(host.address()).body);
        QVERIFY(sent < 64 * 1024 * 1024); // the system's own buffers may hold half of that
    }

    void theTimeIsForAllOfIt_data()
    {
        QTest::addColumn<bool>("trickles");
        QTest::newRow("never answers") << false;
        QTest::newRow("a byte at a time") << true;
    }
    void theTimeIsForAllOfIt()
    {
        QFETCH(bool, trickles);
        HttpsServer host(m_certificates.valid());
        host.onRequest = [trickles](QTcpSocket& socket) {
            if (!trickles)
                return;
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
            auto* drip = new QTimer(&socket);
            QObject::connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
            drip->start(20);
        };
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!ask(host.address(), {.time = std::chrono::milliseconds(600)}).body);
        QVERIFY(clock.elapsed() >= 540); // a coarse timer may be early by a twentieth
    }

    void nobodyThereIsAFailure()
    {
        QUrl address;
        {
            const HttpsServer host(m_certificates.valid());
            address = host.address();
        }
        QVERIFY(!ask(address).body);
        QVERIFY(!ask(QUrl(QStringLiteral("https://no.such.host.invalid/"))).body);
    }

    void theProgramTrustsNoAuthorityButTheSystems()
    {
        HttpsServer host(m_certificates.valid());
        host.answer = HttpsServer::ok(kBody);
        QProcess program;
        program.start(QStringLiteral(BRINDLECAM_FETCH),
                      {host.address().toString(), QStringLiteral("Brindlecam/1.0")});
        QTRY_COMPARE_WITH_TIMEOUT(program.state(), QProcess::NotRunning, 20000);
        QCOMPARE(program.exitCode(), 1);
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
        QVERIFY(host.requests().isEmpty());
    }

    void fifteenSecondsAndAMebibyteUnlessToldOtherwise()
    {
        const FeedRequest::Limits limits;
        QCOMPARE(limits.time.count(), 15000);
        QCOMPARE(limits.bytes, qint64(1048576));
    }
};

BRINDLECAM_TEST(TestFeedRequest);

} // namespace brindlecam

#include "tst_feedrequest.moc"
