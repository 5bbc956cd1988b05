// Covers Updater.
#include "desktop/TrayHost.h"
#include "desktop/support/CaptureTest.h"
#include "https/HttpsServer.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTcpSocket>

namespace brindlecam::desktop {

using https::HttpsServer;

namespace {

const char* const kOffer = "Hay una versión nueva de Brindlecam";
const char* const kFailure = "No se pudo buscar actualizaciones";

QByteArray announcing(const char* version, const char* url)
{
    return HttpsServer::ok(QByteArray("{\"version\": \"") + version + "\", \"url\": \"" + url +
                           "\", \"notes\": {\"es\": \"Novedades.\"}}");
}

} // namespace

/// The search for new versions on a desktop, at a web host of the tests' own.
class TestUpdates final : public CaptureTest {
    Q_OBJECT

private:
    https::Certificates m_certificates;
    std::unique_ptr<HttpsServer> m_host;

    /// A program that finds this host where the product's would be.
    void useHost(const https::Identity& identity)
    {
        usePatternedDesktop({.accessibility = Accessibility::on});
        startProgramThatAsks(identity);
    }
    void startProgramThatAsks(const https::Identity& identity)
    {
        m_host = std::make_unique<HttpsServer>(identity);
        program().environment().insert(QStringLiteral("BRINDLECAM_TEST_FEED"),
                                       m_host->address().toString());
        program().environment().insert(QStringLiteral("BRINDLECAM_TEST_AUTHORITY"),
                                       m_certificates.authorityFile());
        standInForTheBrowser();
        startProgram();
    }
    /// What would open pages writes down which.
    void standInForTheBrowser()
    {
        const QString folder = program().folders().home() + QStringLiteral("/bin");
        QVERIFY(QDir().mkpath(folder));
        QFile opener(folder + QStringLiteral("/xdg-open"));
        QVERIFY(opener.open(QIODevice::WriteOnly));
        opener.write("#!/bin/sh\nprintf %s \"$1\" > '" + opened().toUtf8() + ".part'\nmv '" +
                     opened().toUtf8() + ".part' '" + opened().toUtf8() + "'\n");
        opener.close();
        opener.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        const QString path = QStringLiteral("PATH");
        program().environment().insert(path, folder + QLatin1Char(':') +
                                                 program().environment().value(path));
    }
    [[nodiscard]] QString opened()
    {
        return program().folders().home() + QStringLiteral("/opened");
    }
    void ask() { QCOMPARE(program().command({QStringLiteral("update")}).exitCode, 0); }

private Q_SLOTS:
    void aNewerVersionIsOfferedToWhoAsks()
    {
        useHost(m_certificates.valid());
        m_host->answer = announcing("99.1", "https://example.org/");
        ask();
        QVERIFY(placeOf(kOffer).isValid());
        QVERIFY(dialogHasKeyboard());
        QVERIFY(m_host->requests().constFirst().contains("User-Agent: Brindlecam/"));
        QVERIFY(press("Más tarde"));
        QVERIFY(dialogsAreGone());
        QVERIFY(!QFile::exists(opened()));
        QVERIFY(waitUntil([this] {
            return program().settings().value(QLatin1String("updateNotifiedVersion")) ==
                   QLatin1String("99.1");
        }));
        QVERIFY(program().settings().contains(QLatin1String("updateLastCheck")));
    }

    void theItemInTheTrayLeadsToANewerVersionWhileThereIsOne()
    {
        usePatternedDesktop({.bus = MessageBus::session, .accessibility = Accessibility::on});
        TrayHost host(desktop());
        startProgramThatAsks(m_certificates.valid());
        QVERIFY(host.itemComes());
        const QString item = host.items().front();
        host.follow(item);
        m_host->answer = announcing("99.1", "https://example.org/baja");
        QVERIFY(host.choose(item, {QStringLiteral("Buscar actualizaciones…")}));
        QVERIFY(placeOf(kOffer).isValid());
        const QString newer = QStringLiteral("Descargar Brindlecam 99.1…");
        QVERIFY(waitUntil([&] { return host.newTitles().contains(newer); }));
        QVERIFY(press("Más tarde"));
        QVERIFY(dialogsAreGone());
        QVERIFY(!QFile::exists(opened()));
        QVERIFY(host.choose(item, {newer}));
        QVERIFY(waitUntil([this] { return QFile::exists(opened()); }));
    }

    void itsPageIsOpenedInTheBrowser()
    {
        useHost(m_certificates.valid());
        m_host->answer = announcing("99.1", "https://example.org/baja?x=1&y=%20");
        ask();
        QVERIFY(press("Descargar"));
        QVERIFY(waitUntil([this] { return QFile::exists(opened()); }));
        QFile file(opened());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("https://example.org/baja?x=1&y=%20"));
    }

    void whatIsUpToDateSaysSo()
    {
        useHost(m_certificates.valid());
        m_host->answer = announcing("0.1", "https://example.org/");
        ask();
        QVERIFY(placeOf("Brindlecam está al día").isValid());
        QVERIFY(press("Aceptar"));
        QVERIFY(dialogsAreGone());
    }

    void whatCantBeTrustedIsAFailure_data()
    {
        QTest::addColumn<https::Identity>("identity");
        QTest::addColumn<QByteArray>("answer");
        const QByteArray good = announcing("99.1", "https://example.org/");
        QTest::newRow("self-signed") << m_certificates.selfSigned() << good;
        QTest::newRow("expired") << m_certificates.expired() << good;
        QTest::newRow("a plain page")
            << m_certificates.valid() << announcing("99.1", "http://example.org/");
        QTest::newRow("not found")
            << m_certificates.valid() << QByteArray("HTTP/1.1 404 No\r\nContent-Length: 0\r\n\r\n");
        QTest::newRow("a web page")
            << m_certificates.valid() << HttpsServer::ok("<!doctype html><p>Hola</p>");
        QTest::newRow("a huge answer")
            << m_certificates.valid() << HttpsServer::ok(QByteArray(4 << 20, ' '));
    }
    void whatCantBeTrustedIsAFailure()
    {
        QFETCH(https::Identity, identity);
        QFETCH(QByteArray, answer);
        useHost(identity);
        m_host->answer = answer;
        ask();
        QVERIFY(placeOf(kFailure).isValid());
        QVERIFY(press("Aceptar"));
        QVERIFY(dialogsAreGone());
        QVERIFY(!program().settings().contains(QLatin1String("updateLastCheck")));
        QVERIFY(openArea());
    }

    void anOfferDoesNotComeOverACapture()
    {
        useHost(m_certificates.valid());
        QPointer<QTcpSocket> asker;
        m_host->onRequest = [&asker](QTcpSocket& socket) { asker = &socket; };
        ask();
        QVERIFY(waitUntil([&] { return !asker.isNull(); }));
        QVERIFY(openArea());
        QCOMPARE(program().command({QStringLiteral("update")}).exitCode, 4);
        asker->write(announcing("99.1", "https://example.org/"));
        asker->disconnectFromHost();
        QVERIFY(waitUntil(
            [this] { return program().settings().contains(QLatin1String("updateLastCheck")); }));
        QVERIFY(dialogs().empty());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(!program().settings().contains(QLatin1String("updateNotifiedVersion")));
    }

    void quittingDoesNotWaitForTheHost()
    {
        useHost(m_certificates.valid());
        bool asked = false;
        m_host->onRequest = [&asked](QTcpSocket&) { asked = true; };
        ask();
        QVERIFY(waitUntil([&] { return asked; }));
        QCOMPARE(program().command({QStringLiteral("quit")}).exitCode, 0);
        QVERIFY(program().waitForEnd());
        QCOMPARE(program().exitCode(), 0);
    }

    void thereIsNothingToQuitWhereNothingRuns()
    {
        usePatternedDesktop();
        const CommandResult result = program().command({QStringLiteral("quit")});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.error, QString());
        QVERIFY(!program().isAnswering());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestUpdates)

#include "tst_updates.moc"
