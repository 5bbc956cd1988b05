#include "settings/Release.h"
#include "support/FakeReleaseFeed.h"
#include "support/TestCase.h"

namespace brindlecam {

using test::json;

class TestRelease final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isReadWhole()
    {
        const auto release = Release::fromJson(
            json("{ 'version': '1.4.2', 'url': 'https://x.org/es', 'url_en': 'https://x.org/en', "
                 "'notes': {'es': 'Novedades', 'en': 'News'}, 'more': [1, 2]}"));
        QVERIFY(release);
        QCOMPARE(release->version, QStringLiteral("1.4.2"));
        QCOMPARE(release->pageIn(QStringLiteral("es")), QStringLiteral("https://x.org/es"));
        QCOMPARE(release->pageIn(QStringLiteral("en")), QStringLiteral("https://x.org/en"));
        QCOMPARE(release->notesIn(QStringLiteral("es_MX")), QStringLiteral("Novedades"));
        QCOMPARE(release->notesIn(QStringLiteral("en_GB")), QStringLiteral("News"));
    }

    void whatIsNotSaidInALanguageIsSaidInSpanish()
    {
        const auto release = Release::fromJson(
            json("{'version': '2', 'url': 'https://x.org/', 'notes': {'es': 'Novedades'}}"));
        QVERIFY(release);
        QCOMPARE(release->pageIn(QStringLiteral("en")), QStringLiteral("https://x.org/"));
        QCOMPARE(release->notesIn(QStringLiteral("en")), QStringLiteral("Novedades"));
        const auto silent = Release::fromJson(
            json("{'version': '2', 'url': 'https://x.org/', 'notes': {'en': 'News'}}"));
        QCOMPARE(silent->notesIn(QStringLiteral("es")), QString());
    }

    void onlyWhatIsNeededIsNeeded_data()
    {
        QTest::addColumn<QByteArray>("announced");
        QTest::addColumn<bool>("decodes");
        const auto row = [](const char* name, const char* text, bool decodes) {
            QTest::newRow(name) << json(text) << decodes;
        };
        row("no more than that", "{'version': '1', 'url': 'u'}", true);
        row("nothing said of the rest",
            "{'version': '1', 'url': 'u', 'url_en': null, 'notes': null}", true);
        row("no version", "{'url': 'u'}", false);
        row("no address", "{'version': '1'}", false);
        row("a number for the version", "{'version': 1.2, 'url': 'u'}", false);
        row("a list for the address", "{'version': '1', 'url': ['u']}", false);
        row("a number for the English address", "{'version': '1', 'url': 'u', 'url_en': 1}", false);
        row("a text for the notes", "{'version': '1', 'url': 'u', 'notes': 'n'}", false);
        row("a number among the notes", "{'version': '1', 'url': 'u', 'notes': {'es': 1}}", false);
        row("a list", "[{'version': '1', 'url': 'u'}]", false);
        row("a page", "<!doctype html><html></html>", false);
        row("nothing", "", false);
        row("cut short", "{'version': '1', 'url':", false);
    }
    void onlyWhatIsNeededIsNeeded()
    {
        QFETCH(QByteArray, announced);
        QFETCH(bool, decodes);
        QCOMPARE(Release::fromJson(announced).has_value(), decodes);
    }

    void whatDoesNotFitAMenuIsNoVersion_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::addColumn<bool>("decodes");
        QTest::newRow("the longest") << QByteArray(32, '9') << true;
        QTest::newRow("longer") << QByteArray(33, '9') << false;
        QTest::newRow("none") << QByteArray() << false;
        QTest::newRow("two lines") << QByteArray("1\\n2") << false;
    }
    void whatDoesNotFitAMenuIsNoVersion()
    {
        QFETCH(QByteArray, version);
        QFETCH(bool, decodes);
        const QByteArray announced = json("{'url': 'u', 'version': '") + version + json("'}");
        QCOMPARE(Release::fromJson(announced).has_value(), decodes);
    }

    void notesAreAsLongAsFitsAMessage()
    {
        Release release{QStringLiteral("1"), QStringLiteral("u"), {}, {}};
        const QString es = QStringLiteral("es");
        release.notes.insert(es, QString(1000, QLatin1Char('x')));
        QCOMPARE(release.notesIn(es).size(), 1000);
        release.notes.insert(es, QString(1001, QLatin1Char('x')));
        QCOMPARE(release.notesIn(es), QString(1000, QLatin1Char('x')) + QChar(0x2026));
        release.notes.insert(es, QStringLiteral("x\n").repeated(40));
        QCOMPARE(release.notesIn(es).count(QLatin1Char('\n')), 13);
    }

    void onlyPagesByHttpsMayBeOpened_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("safe");
        const auto row = [](const char* url, bool safe) {
            QTest::newRow(url) << QString::fromUtf8(url) << safe;
        };
        row("https://brindlecam.example/descarga?v=1#x", true);
        row("https://brindlecam.example/año", true);
        row("http://brindlecam.example/", false);
        row("HTTPS://brindlecam.example/", false);
        row("file:///etc/passwd", false);
        row("javascript:alert(1)", false);
        row("https:///x", false);
        row("https://", false);
        row("https://a b/", false);
        row("brindlecam.example", false);
        row("", false);
        row(" https://brindlecam.example/", false);
    }
    void onlyPagesByHttpsMayBeOpened()
    {
        QFETCH(QString, url);
        QTEST(Release::isSafe(url), "safe");
    }

    void versionsAreComparedNumberByNumber_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("installed");
        QTest::addColumn<bool>("newer");
        const auto row = [](const char* version, const char* installed, bool newer) {
            QTest::addRow("%s, %s", version, installed)
                << QString::fromLatin1(version) << QString::fromLatin1(installed) << newer;
        };
        row("1.2.0", "1.2", false);
        row("1.2", "1.2.0", false);
        row("1.10", "1.9", true);
        row("1.9", "1.10", false);
        row("2", "1.99.99", true);
        row("1.99.99", "2", false);
        row("1.2.1", "1.2", true);
        row("1..2", "1.2", false);
        row(".1.2.", "1.2", false);
        row("1.3-beta", "1.0", false); // counts as 1.0
        row("1.3-beta", "1.2", false);
        row("v2.0-beta..", "1.0", false); // 0.0
        row("0.1", "0", true);
        row("", "0", false);
        row("1", "", true);
        row("-1", "0", false);
        row("1.20261123001122", "1.2", true);
    }
    void versionsAreComparedNumberByNumber()
    {
        QFETCH(QString, version);
        QFETCH(QString, installed);
        QTEST(Release::isVersion(version, installed), "newer");
    }
};

BRINDLECAM_TEST(TestRelease);

} // namespace brindlecam

#include "tst_release.moc"
