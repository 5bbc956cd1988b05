#include "UpdaterDesk.h"
#include "support/TestCase.h"

#include <QTranslator>

namespace brindlecam {

using test::UpdaterDesk;

namespace {

/// The catalogue of a language that says so.
class EnglishCatalogue final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char*, const char* source, const char*,
                                    int) const override
    {
        return qstrcmp(source, "es") == 0 ? QStringLiteral("en") : QString();
    }
};

} // namespace

class TestUpdater final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void asksSoonAfterTheStartAndOnceADay()
    {
        UpdaterDesk desk;
        desk.updater->start();
        QCOMPARE(desk.feed.asked, 0);
        QTRY_COMPARE(desk.feed.asked, 1);
        desk.feed.announce("1.2");
        QCOMPARE(desk.defaults.date(QStringLiteral("updateLastCheck")), desk.now);
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 1);
        desk.now = desk.now.addSecs(86399);
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 1);
        desk.now = desk.now.addSecs(1);
        QTRY_COMPARE(desk.feed.asked, 2);
    }

    void theUsualTimes()
    {
        const Updater::Timing timing;
        QCOMPARE(timing.first.count(), 8000);
        QCOMPARE(timing.again.count(), 21600000);
        QCOMPARE(timing.idleAgain.count(), 60000);
    }

    void aNewStartKnowsWhenItAskedLast()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.2");
        desk.begin();
        desk.updater->start();
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 1);
    }

    void aDateThatIsNoneIsLongAgo()
    {
        UpdaterDesk desk;
        desk.defaults.setString(QStringLiteral("updateLastCheck"), QStringLiteral("ayer"));
        desk.updater->start();
        QTRY_COMPARE(desk.feed.asked, 1);
    }

    void switchedOffItAsksOnlyWhenTheUserDoes()
    {
        UpdaterDesk desk;
        desk.defaults.setBoolean(QStringLiteral("checkUpdates"), false);
        desk.updater->start();
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 0);
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 1);
        desk.feed.announce("1.2");
        QCOMPARE(desk.said(), QStringLiteral("Brindlecam está al día"));
    }

    void withoutAPlaceToAskItNeverDoes()
    {
        QVERIFY(UpdaterDesk().updater->canAsk());
        UpdaterDesk desk(test::FakeReleaseFeed::Place::none);
        QVERIFY(!desk.updater->canAsk());
        desk.updater->start();
        UpdaterDesk::wait();
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 0);
    }

    void oneQuestionAtATime()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 1);
        desk.feed.announce("1.2");
        QCOMPARE(desk.said(), QString()); // the user's was dropped
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 2);
    }

    void usersAreToldThatTheyAreUpToDate_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::newRow("the same") << QByteArray("1.2");
        QTest::newRow("the same, longer") << QByteArray("1.2.0");
        QTest::newRow("an older one") << QByteArray("1.1.9");
        QTest::newRow("none at all") << QByteArray("v2.0-beta..");
    }
    void usersAreToldThatTheyAreUpToDate()
    {
        QFETCH(QByteArray, version);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::user);
        desk.feed.announce(version.constData());
        QCOMPARE(desk.said(), QStringLiteral("Brindlecam está al día"));
        QCOMPARE(desk.details(), QStringLiteral("Tienes la versión 1.2, la más reciente."));
        QVERIFY(!desk.updater->available());
        QCOMPARE(desk.changes, 1);
    }

    void failuresAreToldToUsersAlone_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("body");
        const auto row = [](const char* name, std::optional<QByteArray> body) {
            QTest::newRow(name) << std::move(body);
        };
        row("no answer", std::nullopt);
        row("no announcement", QByteArray("<html>"));
        row("a plain address", test::json("{'version': '9', 'url': 'http://x.org/'}"));
        row("no address", test::json("{'version': '9', 'url': 'x y'}"));
    }
    void failuresAreToldToUsersAlone()
    {
        QFETCH(std::optional<QByteArray>, body);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(body);
        QCOMPARE(desk.said(), QString());
        desk.updater->check(Updater::Asker::user);
        desk.feed.answer(body);
        QCOMPARE(desk.said(), QStringLiteral("No se pudo buscar actualizaciones"));
        QCOMPARE(desk.details(),
                 QStringLiteral("Revisa tu conexión a internet e inténtalo de nuevo."));
        QVERIFY(!desk.defaults.contains(QStringLiteral("updateLastCheck")));
        QVERIFY(!desk.updater->available());
        QCOMPARE(desk.changes, 0);
    }

    void aFailureForgetsNothing()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(std::nullopt);
        QCOMPARE(desk.updater->available()->version, QStringLiteral("1.3"));
    }

    void nothingIsToldWhileTheProgramEnds()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::user);
        desk.activity.stage = Activity::Stage::quitting;
        desk.feed.answer(std::nullopt);
        QCOMPARE(desk.said(), QString());
    }

    void whoAsksTwiceIsToldOnce()
    {
        UpdaterDesk desk;
        for (int i = 0; i < 2; ++i) {
            desk.updater->check(Updater::Asker::user);
            desk.feed.answer(std::nullopt);
        }
        QCOMPARE(desk.panels.shown.size(), std::size_t(1));
        desk.answer("Aceptar");
        desk.updater->check(Updater::Asker::user);
        desk.feed.answer(std::nullopt);
        QCOMPARE(desk.panels.shown.size(), std::size_t(2));
    }

    void aPageThatNothingOpensIsTold()
    {
        UpdaterDesk desk;
        desk.opener.succeeds = false;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.answer("Descargar");
        QCOMPARE(desk.said(), QStringLiteral("No se pudo abrir la página"));
        QCOMPARE(desk.details(), QStringLiteral("https://x.org/es"));
    }

    void aVersionThatIsGoneIsForgotten()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.2");
        QVERIFY(!desk.updater->available());
        QCOMPARE(desk.changes, 2);
        desk.updater->openDownload();
        QVERIFY(desk.opener.pages.isEmpty());
    }

    void pageAndNotesAreInTheLanguageOfTheInterface()
    {
        EnglishCatalogue english;
        QCoreApplication::installTranslator(&english);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        QVERIFY(desk.details().endsWith(QStringLiteral("\n\nNews.")));
        desk.updater->openDownload();
        QCOMPARE(desk.opener.pages, QStringList(QStringLiteral("https://x.org/en")));
        QCoreApplication::removeTranslator(&english);
    }

    void anEnglishPageThatIsNotSafeIsNotOpened()
    {
        EnglishCatalogue english;
        QCoreApplication::installTranslator(&english);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(test::json(
            "{'version': '1.3', 'url': 'https://x.org/', 'url_en': 'file:///etc/passwd'}"));
        desk.updater->openDownload();
        QVERIFY(desk.opener.pages.isEmpty());
        QCoreApplication::removeTranslator(&english);
    }

    void aProgramThatKnowsNoVersionOfItsOwnIsOlderThanAny()
    {
        QCoreApplication::setApplicationVersion({});
        QCOMPARE(Updater::installedVersion(), QStringLiteral("0"));
        UpdaterDesk desk;
        QCoreApplication::setApplicationVersion({});
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("0.0.1");
        QVERIFY(desk.updater->available());
    }
};

BRINDLECAM_TEST(TestUpdater);

} // namespace brindlecam

#include "tst_updater.moc"
